#pragma once

#include <array>
#include <optional>

#include "pixels/Export.h"

namespace kelvar::warp {

struct Point {
  double x = 0;
  double y = 0;
  bool operator==(const Point&) const = default;
};

/// Four corners in the order top-left, top-right, bottom-right, bottom-left of the image.
using Quad = std::array<Point, 4>;

/// A projective map of the plane, as a 3 by 3 matrix in rows: (x, y) goes to
/// ((m0 x + m1 y + m2) / w, (m3 x + m4 y + m5) / w) with w = m6 x + m7 y + m8.
struct KELVAR_PIXELS_EXPORT Homography {
  std::array<double, 9> m{1, 0, 0, 0, 1, 0, 0, 0, 1};

  /// The map from the corners of the rectangle (0, 0, width, height) to `quad`, or none unless the
  /// quad is strictly convex with finite corners; either orientation is valid. After Heckbert,
  /// "Fundamentals of Texture Mapping and Image Warping", 1989, section 2.2.3.
  static std::optional<Homography> fromRectangle(double width, double height, const Quad& quad);

  /// The inverse up to a factor, which makes no difference to a projective map. The map must be
  /// invertible.
  Homography inverted() const;

  Point map(Point p) const;
};

}  // namespace kelvar::warp
