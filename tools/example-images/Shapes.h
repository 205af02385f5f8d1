#pragma once

#include "Vec.h"

/// Signed distances in a body's own coordinates: negative inside, and never more than the true
/// distance, so that a ray can step by them safely.
namespace kelvar::examples {

/// A rectangle with half sides `halfX` and `halfY` and corners rounded by `radius`.
inline double roundedRectangle(double x, double y, double halfX, double halfY, double radius) {
  const double dx = std::abs(x) - halfX + radius;
  const double dy = std::abs(y) - halfY + radius;
  return std::hypot(std::max(dx, 0.0), std::max(dy, 0.0)) + std::min(std::max(dx, dy), 0.0) -
         radius;
}

/// Extrudes a flat outline at distance `outline` into a plate of half thickness `half` around z =
/// 0, with edges rounded by `radius`.
inline double plate(double outline, double z, double half, double radius) {
  const double a = outline + radius;
  const double b = std::abs(z) - half + radius;
  return std::hypot(std::max(a, 0.0), std::max(b, 0.0)) + std::min(std::max(a, b), 0.0) - radius;
}

inline double box(Vec p, Vec half, double radius) {
  return plate(roundedRectangle(p.x, p.y, half.x, half.y, radius), p.z, half.z, radius);
}

/// Around the z axis.
inline double cylinder(Vec p, double r, double half, double radius) {
  return plate(std::hypot(p.x, p.y) - r, p.z, half, radius);
}

/// A torus around the y axis: `r` is the major radius, `tube` the minor one.
inline double ring(Vec p, double r, double tube) {
  return std::hypot(std::hypot(p.x, p.z) - r, p.y) - tube;
}

}  // namespace kelvar::examples
