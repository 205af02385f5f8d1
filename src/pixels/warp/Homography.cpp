#include "pixels/warp/Homography.h"

#include <cmath>

namespace kelvar::warp {
namespace {

/// Twice the signed area of the triangle a, b, c.
double cross(Point a, Point b, Point c) {
  return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

bool strictlyConvex(const Quad& q) {
  int turns = 0;
  for (int i = 0; i < 4; ++i) {
    const double turn = cross(q[i], q[(i + 1) % 4], q[(i + 2) % 4]);
    if (!std::isfinite(turn)) return false;
    turns += turn > 0 ? 1 : turn < 0 ? -1 : 0;
  }
  return turns == 4 || turns == -4;
}

}  // namespace

std::optional<Homography> Homography::fromRectangle(double width, double height, const Quad& quad) {
  if (!(width > 0 && height > 0) || !strictlyConvex(quad)) return std::nullopt;
  const auto [p0, p1, p2, p3] = quad;
  // Added in this order, the sums are exactly zero for every rectangle along the axes.
  const double dx1 = p1.x - p2.x, dx2 = p3.x - p2.x, sx = (p0.x - p3.x) + (p2.x - p1.x);
  const double dy1 = p1.y - p2.y, dy2 = p3.y - p2.y, sy = (p0.y - p3.y) + (p2.y - p1.y);
  const double det = dx1 * dy2 - dx2 * dy1;
  const double g = (sx * dy2 - dx2 * sy) / det;
  const double h = (dx1 * sy - sx * dy1) / det;
  Homography map;
  map.m = {(p1.x - p0.x + g * p1.x) / width,
           (p3.x - p0.x + h * p3.x) / height,
           p0.x,
           (p1.y - p0.y + g * p1.y) / width,
           (p3.y - p0.y + h * p3.y) / height,
           p0.y,
           g / width,
           h / height,
           1};
  for (const double value : map.m) {
    if (!std::isfinite(value)) return std::nullopt;
  }
  return map;
}

Homography Homography::inverted() const {
  const auto& [a, b, c, d, e, f, g, h, i] = m;
  Homography inverse;
  inverse.m = {e * i - f * h, c * h - b * i, b * f - c * e, f * g - d * i, a * i - c * g,
               c * d - a * f, d * h - e * g, b * g - a * h, a * e - b * d};
  return inverse;
}

Point Homography::map(Point p) const {
  const double w = m[6] * p.x + m[7] * p.y + m[8];
  return {(m[0] * p.x + m[1] * p.y + m[2]) / w, (m[3] * p.x + m[4] * p.y + m[5]) / w};
}

}  // namespace kelvar::warp
