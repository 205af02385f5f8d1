#pragma once

#include "pixels/warp/Homography.h"

namespace kelvar::warp {

/// Pixels [begin, end) of one row.
struct Span {
  int begin = 0;
  int end = 0;
};

/// The pixels of row `row` whose centers lie inside the convex `quad` or on its outline, within
/// [0, width). Each edge is a half-plane, whose intersection with the line through the row's
/// centers bounds the span on one side.
Span centersInside(const Quad& quad, int row, int width);

}  // namespace kelvar::warp
