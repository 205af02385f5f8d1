#pragma once

#include <array>
#include <optional>

#include "platform/Export.h"

namespace kelvar::warp {

struct Point {
  double x = 0;
  double y = 0;
};

/// Four corners in the order top-left, top-right, bottom-right, bottom-left of the picture.
using Quad = std::array<Point, 4>;

/// A projective map of the plane, as a 3 by 3 matrix in rows: (x, y) goes to
/// ((m0 x + m1 y + m2) / w, (m3 x + m4 y + m5) / w) with w = m6 x + m7 y + m8.
struct KELVAR_EXPORT Homography {
  std::array<double, 9> m{1, 0, 0, 0, 1, 0, 0, 0, 1};

  /// The map that carries the corners of the rectangle (0, 0, width, height) to `quad`.
  /// Source: Heckbert, "Fundamentals of Texture Mapping and Image Warping", 1989, section 2.2.3.
  /// None unless the quad is strictly convex, of either orientation, with finite corners.
  static std::optional<Homography> fromRectangle(double width, double height, const Quad& quad);

  /// The inverse map, up to a factor. Requires an invertible map.
  Homography inverted() const;

  Point map(Point p) const;
};

}  // namespace kelvar::warp
