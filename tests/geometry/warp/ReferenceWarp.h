#pragma once

#include <algorithm>
#include <array>
#include <cmath>

#include "geometry/warp/Homography.h"
#include "geometry/warp/PixelView.h"

namespace kelvar::warp {

/// The warp in plain double precision, the arbiter of every kernel.
class ReferenceWarp {
 public:
  using Colour = std::array<double, 4>;

  /// Requires a quad that has a map.
  ReferenceWarp(const ConstPixelView& source, const Quad& quad)
      : source_(source),
        quad_(quad),
        inverse_(Homography::fromRectangle(source.width, source.height, quad)->inverted()) {}

  /// How far a destination point lies inside the quad, in pixels; negative outside.
  double depth(Point p) const {
    double area = 0, least = 1e300;
    for (int i = 0; i < 4; ++i) area += cross(quad_[i], quad_[(i + 1) % 4]);
    for (int i = 0; i < 4; ++i) {
      const Point a = quad_[i], b = quad_[(i + 1) % 4];
      const Point edge{b.x - a.x, b.y - a.y};
      const double side = cross(edge, {p.x - a.x, p.y - a.y}) / std::hypot(edge.x, edge.y);
      least = std::min(least, area > 0 ? side : -side);
    }
    return least;
  }

  /// The bilinear sample for a destination point, edge pixels repeated.
  Colour sample(Point p) const {
    const Point at = inverse_.map(p);
    const double u = std::clamp(at.x - 0.5, 0.0, source_.width - 1.0);
    const double v = std::clamp(at.y - 0.5, 0.0, source_.height - 1.0);
    const int x0 = int(u), x1 = std::min(x0 + 1, source_.width - 1);
    const int y0 = int(v), y1 = std::min(y0 + 1, source_.height - 1);
    Colour colour;
    for (int c = 0; c < 4; ++c) {
      const auto mix = [&](int y) {
        const uint8_t* row = source_.row(y);
        return row[x0 * 4 + c] * (1 - (u - x0)) + row[x1 * 4 + c] * (u - x0);
      };
      colour[c] = mix(y0) * (1 - (v - y0)) + mix(y1) * (v - y0);
    }
    return colour;
  }

  /// The mean over a grid of `n` by `n` samples in pixel (x, y), nothing outside the quad.
  Colour mean(int x, int y, int n) const {
    Colour sum{};
    for (int j = 0; j < n; ++j) {
      for (int i = 0; i < n; ++i) {
        const Point p{x + (i + 0.5) / n, y + (j + 0.5) / n};
        if (depth(p) < 0) continue;
        const Colour colour = sample(p);
        for (int c = 0; c < 4; ++c) sum[c] += colour[c] / (n * n);
      }
    }
    return sum;
  }

 private:
  static double cross(Point a, Point b) { return a.x * b.y - a.y * b.x; }

  ConstPixelView source_;
  Quad quad_;
  Homography inverse_;
};

}  // namespace kelvar::warp
