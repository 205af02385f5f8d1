#include "pixels/warp/Coverage.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace kelvar::warp {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

/// An interval on a line, empty when `from` exceeds `to`.
struct Interval {
  double from = kInfinity;
  double to = -kInfinity;

  void add(double x) {
    from = std::min(from, x);
    to = std::max(to, x);
  }
};

/// Where the horizontal line at `y` intersects the quad.
Interval crossing(const Quad& quad, double y) {
  Interval interval;
  for (int i = 0; i < 4; ++i) {
    const Point a = quad[i], b = quad[(i + 1) % 4];
    if (std::min(a.y, b.y) > y || std::max(a.y, b.y) < y) continue;
    if (a.y == b.y) {
      interval.add(a.x);
      interval.add(b.x);
    } else {
      interval.add(std::clamp(a.x + (b.x - a.x) * ((y - a.y) / (b.y - a.y)), std::min(a.x, b.x),
                              std::max(a.x, b.x)));
    }
  }
  return interval;
}

int clampedInt(double value, int limit) { return int(std::clamp(value, 0.0, double(limit))); }

/// A quad clipped to the four sides of a pixel has at most eight corners.
struct Polygon {
  Point corners[8];
  int count = 0;
};

/// The part of `polygon` on which `distance`, linear in the point, is not negative.
template <typename Distance>
Polygon clip(const Polygon& polygon, const Distance& distance) {
  Polygon result;
  for (int i = 0; i < polygon.count; ++i) {
    const Point a = polygon.corners[i], b = polygon.corners[(i + 1) % polygon.count];
    const double da = distance(a), db = distance(b);
    if (da >= 0) result.corners[result.count++] = a;
    if ((da < 0) != (db < 0)) {
      const double t = da / (da - db);
      result.corners[result.count++] = {a.x + t * (b.x - a.x), a.y + t * (b.y - a.y)};
    }
  }
  return result;
}

double area(const Polygon& polygon) {
  double sum = 0;
  for (int i = 0; i < polygon.count; ++i) {
    const Point a = polygon.corners[i], b = polygon.corners[(i + 1) % polygon.count];
    sum += a.x * b.y - b.x * a.y;
  }
  return std::abs(sum) / 2;
}

}  // namespace

RowCoverage::RowCoverage(const Quad& quad, int row, int width) : quad_(quad), row_(row) {
  const Interval top = crossing(quad, row), bottom = crossing(quad, row + 1);
  Interval reach;
  for (const Interval& line : {top, bottom}) {
    if (line.from <= line.to) {
      reach.add(line.from);
      reach.add(line.to);
    }
  }
  for (const Point corner : quad) {
    if (corner.y >= row && corner.y <= row + 1) reach.add(corner.x);
  }
  if (reach.from > reach.to) return;
  touched_.begin = clampedInt(std::floor(reach.from), width);
  touched_.end = std::max(touched_.begin, clampedInt(std::ceil(reach.to), width));
  // A convex shape contains a pixel if it contains its corners.
  whole_.begin = std::clamp(clampedInt(std::ceil(std::max(top.from, bottom.from)), width),
                            touched_.begin, touched_.end);
  whole_.end = std::clamp(clampedInt(std::floor(std::min(top.to, bottom.to)), width), whole_.begin,
                          touched_.end);
}

double RowCoverage::of(int x) const {
  if (x < touched_.begin || x >= touched_.end) return 0;
  if (x >= whole_.begin && x < whole_.end) return 1;
  Polygon polygon;
  polygon.count = 4;
  // Relative to the pixel, so that large coordinates lose no precision.
  for (int i = 0; i < 4; ++i) polygon.corners[i] = {quad_[i].x - x, quad_[i].y - row_};
  polygon = clip(polygon, [](Point p) { return p.y; });
  polygon = clip(polygon, [](Point p) { return 1 - p.y; });
  polygon = clip(polygon, [](Point p) { return p.x; });
  polygon = clip(polygon, [](Point p) { return 1 - p.x; });
  return std::min(area(polygon), 1.0);
}

}  // namespace kelvar::warp
