#pragma once

#include "geometry/warp/Homography.h"
#include "geometry/warp/Span.h"

namespace kelvar::warp {

/// How much of the pixels of one row lies inside a convex quad.
class RowCoverage {
 public:
  RowCoverage(const Quad& quad, int row, int width);

  /// The pixels that the quad touches, within [0, width).
  Span touched() const { return touched_; }

  /// The pixels that lie inside as a whole; empty spans begin and end within `touched`.
  Span whole() const { return whole_; }

  /// The area of the quad within pixel `x`, 0 to 1. Source: Sutherland and Hodgman, "Reentrant
  /// Polygon Clipping", 1974, then the shoelace sum.
  double of(int x) const;

 private:
  Quad quad_;
  int row_;
  Span touched_, whole_;
};

}  // namespace kelvar::warp
