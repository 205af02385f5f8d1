#pragma once

#include <algorithm>
#include <cmath>

namespace kelvar::examples {

/// A point, a direction or a linear color. Lengths in scenes are centimeters; z is up.
struct Vec {
  double x = 0;
  double y = 0;
  double z = 0;
};

inline Vec operator+(Vec a, Vec b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
inline Vec operator-(Vec a, Vec b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
inline Vec operator-(Vec a) { return {-a.x, -a.y, -a.z}; }
inline Vec operator*(Vec a, double s) { return {a.x * s, a.y * s, a.z * s}; }
inline Vec operator*(double s, Vec a) { return a * s; }
inline Vec operator*(Vec a, Vec b) { return {a.x * b.x, a.y * b.y, a.z * b.z}; }
inline Vec& operator+=(Vec& a, Vec b) { return a = a + b; }

inline double dot(Vec a, Vec b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
inline Vec cross(Vec a, Vec b) {
  return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
inline double length(Vec a) { return std::sqrt(dot(a, a)); }
inline Vec normalized(Vec a) { return a * (1 / length(a)); }
inline Vec mix(Vec a, Vec b, double t) { return a + (b - a) * t; }
inline double luminance(Vec c) { return 0.2126 * c.x + 0.7152 * c.y + 0.0722 * c.z; }

/// 0 below `low`, 1 above `high`, smooth in between.
inline double smoothstep(double low, double high, double x) {
  const double t = std::clamp((x - low) / (high - low), 0.0, 1.0);
  return t * t * (3 - 2 * t);
}

struct Ray {
  Vec origin;
  /// Has length 1.
  Vec direction;
  Vec at(double t) const { return origin + direction * t; }
};

/// Three perpendicular unit axes at an origin: the position of a body in the room.
struct Frame {
  Vec origin;
  Vec x{1, 0, 0};
  Vec y{0, 1, 0};
  Vec z{0, 0, 1};

  /// Any two axes perpendicular to `normal`.
  static Frame around(Vec origin, Vec normal) {
    const Vec other = std::abs(normal.z) < 0.9 ? Vec{0, 0, 1} : Vec{1, 0, 0};
    const Vec x = normalized(cross(other, normal));
    return {origin, x, cross(normal, x), normal};
  }

  Vec directionToRoom(Vec v) const { return x * v.x + y * v.y + z * v.z; }
  Vec directionFromRoom(Vec v) const { return {dot(v, x), dot(v, y), dot(v, z)}; }
  Vec pointToRoom(Vec p) const { return origin + directionToRoom(p); }
  Vec pointFromRoom(Vec p) const { return directionFromRoom(p - origin); }
};

}  // namespace kelvar::examples
