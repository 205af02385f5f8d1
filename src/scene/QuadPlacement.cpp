#include "scene/QuadPlacement.h"

#include <algorithm>

#include "pixels/PixelSnapping.h"

namespace kelvar {
namespace {

using warp::Point;
using warp::Quad;

Quad scaled(Quad quad, double factor) {
  for (Point& corner : quad) corner = {corner.x * factor, corner.y * factor};
  return quad;
}

double factorOf(double scale) { return scale == 0 ? 1.0 : scale; }

}  // namespace

BoxWithOrigin boxWithOrigin(std::span<const Point> points) {
  BoxWithOrigin box;
  for (const Point& point : points) {
    box.left = std::min(box.left, point.x);
    box.top = std::min(box.top, point.y);
    box.right = std::max(box.right, point.x);
    box.bottom = std::max(box.bottom, point.y);
  }
  return box;
}

double windingSum(std::span<const Point> points) {
  double sum = 0;
  for (size_t i = 0; i < points.size(); ++i) {
    sum += windingTerm(points[i], points[i + 1 < points.size() ? i + 1 : 0]);
  }
  return sum;
}

bool isClockwise(std::span<const Point> points) { return !(windingSum(points) > 0); }

void makeClockwise(std::span<Point> points) {
  if (!isClockwise(points)) std::reverse(points.begin() + 1, points.end());
}

void normalizePoints(std::span<Point> points) {
  const BoxWithOrigin box = boxWithOrigin(points);
  for (Point& point : points) point = {point.x - box.left, point.y - box.top};
  makeClockwise(points);
}

Quad orientedQuad(const Quad& corners, bool flipped, uint64_t rotation) {
  Quad quad = corners;
  if (flipped) quad = {corners[1], corners[0], corners[3], corners[2]};
  // Each turn moves the last corner to the front.
  std::rotate(quad.begin(), quad.end() - ptrdiff_t(rotation % 4), quad.end());
  return quad;
}

Placement placeInBoundingBox(const Quad& quad, double scale) {
  Placement placement{.quad = scaled(quad, factorOf(scale))};
  const auto [left, right] = std::minmax_element(placement.quad.begin(), placement.quad.end(),
                                                 [](auto a, auto b) { return a.x < b.x; });
  const auto [top, bottom] = std::minmax_element(placement.quad.begin(), placement.quad.end(),
                                                 [](auto a, auto b) { return a.y < b.y; });
  // Bottom-up, the lowest point has y = 0, so only the top edge is widened.
  const double origin = floorToPixel(left->x), lowest = bottom->y;
  placement.width = ceilToPixel(right->x) - origin;
  placement.height = ceilToPixel(lowest - top->y);
  for (Point& corner : placement.quad) {
    corner = {corner.x - origin, placement.height - (lowest - corner.y)};
  }
  return placement;
}

Placement placeInRectangle(const Quad& quad, double width, double height, double scale) {
  const double factor = factorOf(scale);
  return {ceilToPixel(width * factor), ceilToPixel(height * factor), scaled(quad, factor)};
}

}  // namespace kelvar
