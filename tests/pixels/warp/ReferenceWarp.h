#pragma once

#include <algorithm>
#include <array>
#include <cmath>

#include "pixels/PixelView.h"
#include "pixels/warp/Homography.h"
#include "pixels/warp/Pixels.h"

namespace kelvar::warp {

/// The warp in plain double precision, the arbiter of every kernel.
class ReferenceWarp {
 public:
  using Color = std::array<double, 4>;

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

  /// The bilinear sample for a destination point, edge pixels repeated; colors weighted by alpha if
  /// the source is straight. Unused channels are zero.
  Color sample(Point p) const { return finished(weighted(p)); }

  /// The mean over a grid of `n` by `n` samples in pixel (x, y), nothing outside the quad.
  Color mean(int x, int y, int n) const {
    Color sum{};
    for (int j = 0; j < n; ++j) {
      for (int i = 0; i < n; ++i) {
        const Point p{x + (i + 0.5) / n, y + (j + 0.5) / n};
        if (depth(p) < 0) continue;
        const Color color = weighted(p);
        for (int c = 0; c < 4; ++c) sum[c] += color[c] / (n * n);
      }
    }
    return finished(sum);
  }

  /// The largest magnitude among the pixels that a sample is taken from.
  double magnitude(Point p) const {
    double largest = 0;
    for (const Tap& tap : taps(p)) {
      for (int c = 0; c < source_.format.channels; ++c) {
        largest = std::max(largest, std::abs(componentAt(source_, tap.x, tap.y, c)));
      }
    }
    return largest;
  }

 private:
  /// One of the four pixels of a sample.
  struct Tap {
    int x, y;
    double weight;
  };

  std::array<Tap, 4> taps(Point p) const {
    const Point at = inverse_.map(p);
    const double u = std::clamp(at.x - 0.5, 0.0, source_.width - 1.0);
    const double v = std::clamp(at.y - 0.5, 0.0, source_.height - 1.0);
    const int x0 = int(u), x1 = std::min(x0 + 1, source_.width - 1);
    const int y0 = int(v), y1 = std::min(y0 + 1, source_.height - 1);
    const double fx = u - x0, fy = v - y0;
    return {{{x0, y0, (1 - fx) * (1 - fy)},
             {x1, y0, fx * (1 - fy)},
             {x0, y1, (1 - fx) * fy},
             {x1, y1, fx * fy}}};
  }

  bool isStraight() const { return source_.format.alpha == AlphaKind::Straight; }

  /// The sample, straight colors multiplied by alpha.
  Color weighted(Point p) const {
    Color color{};
    for (const Tap& tap : taps(p)) {
      const double alpha = isStraight() ? componentAt(source_, tap.x, tap.y, 3) : 1;
      for (int c = 0; c < source_.format.channels; ++c) {
        const double factor = isStraight() && c == 3 ? 1 : alpha;
        color[c] += tap.weight * factor * componentAt(source_, tap.x, tap.y, c);
      }
    }
    return color;
  }

  Color finished(Color color) const {
    if (!isStraight()) return color;
    for (int c = 0; c < 3; ++c) color[c] = color[3] > 0 ? color[c] / color[3] : 0;
    return color;
  }

  static double cross(Point a, Point b) { return a.x * b.y - a.y * b.x; }

  ConstPixelView source_;
  Quad quad_;
  Homography inverse_;
};

}  // namespace kelvar::warp
