#pragma once

#include "pixels/warp/Homography.h"
#include "pixels/warp/Span.h"

namespace kelvar::warp {

/// How much of each pixel in one row lies inside a convex quad.
class RowCoverage {
 public:
  RowCoverage(const Quad& quad, int row, int width);

  /// The pixels that the quad touches, within [0, width).
  Span touched() const { return touched_; }

  /// The pixels wholly inside. If there are none, the span is empty and lies within `touched`.
  Span whole() const { return whole_; }

  /// The area of the quad within pixel `x`, 0 to 1: the quad is clipped to the pixel (Sutherland
  /// and Hodgman, "Reentrant Polygon Clipping", 1974) and measured by the shoelace formula.
  double of(int x) const;

 private:
  Quad quad_;
  int row_;
  Span touched_, whole_;
};

}  // namespace kelvar::warp
