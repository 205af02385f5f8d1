#pragma once

#include "geometry/warp/Homography.h"

namespace kelvar::warp {

/// Pixels [begin, end) of one row.
struct Span {
  int begin = 0;
  int end = 0;
};

/// The pixels of row `row` whose centres lie inside the convex `quad` or on its outline, within
/// [0, width). Source: each edge is a half-plane; its crossing with the row's centre line bounds
/// the span on one side.
Span centresInside(const Quad& quad, int row, int width);

}  // namespace kelvar::warp
