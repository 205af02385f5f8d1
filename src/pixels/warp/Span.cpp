#include "pixels/warp/Span.h"

#include <algorithm>
#include <cmath>

namespace kelvar::warp {

Span centersInside(const Quad& quad, int row, int width) {
  const double y = row + 0.5;
  double left = 0, right = width;
  const double turn = (quad[1].x - quad[0].x) * (quad[2].y - quad[0].y) -
                      (quad[1].y - quad[0].y) * (quad[2].x - quad[0].x);
  const double sign = turn > 0 ? 1 : -1;
  for (int i = 0; i < 4; ++i) {
    const Point a = quad[i], b = quad[(i + 1) % 4];
    // Inside: sign * ((b - a) x (p - a)) >= 0, that is, slope * x <= rest.
    const double slope = sign * (b.y - a.y);
    const double rest = sign * (b.x - a.x) * (y - a.y) + slope * a.x;
    if (slope > 0) {
      right = std::min(right, rest / slope);
    } else if (slope < 0) {
      left = std::max(left, rest / slope);
    } else if (rest < 0) {
      return {};
    }
  }
  if (left > right) return {};
  const Span span{int(std::ceil(left - 0.5)), int(std::floor(right - 0.5)) + 1};
  return span.begin < span.end ? span : Span{};
}

}  // namespace kelvar::warp
