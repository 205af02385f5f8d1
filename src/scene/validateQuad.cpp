#include "scene/validateQuad.h"

#include <cmath>

namespace kelvar {
namespace {

using warp::Point;
using warp::Quad;

/// Twice the signed area of the triangle a, b, c.
double cross(const Point& a, const Point& b, const Point& c) {
  return (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
}

bool hasDuplicates(const Quad& corners) {
  for (size_t i = 0; i < 4; ++i) {
    for (size_t j = i + 1; j < 4; ++j) {
      if (corners[i] == corners[j]) return true;
    }
  }
  return false;
}

tl::unexpected<Error> invalid(const char* why) {
  return failure(Error::Kind::InvalidArgument, why);
}

}  // namespace

Result<void> validateQuad(const Quad& corners) {
  if (hasDuplicates(corners)) return invalid("two of the corners are the same point");
  int left = 0, right = 0;
  for (size_t i = 0; i < 4; ++i) {
    const double turn = cross(corners[i], corners[(i + 1) % 4], corners[(i + 2) % 4]);
    if (!std::isfinite(turn)) return invalid("the corners are too far apart");
    left += turn < 0;
    right += turn > 0;
  }
  if (left + right < 4) {
    return invalid("three of the corners lie on one line or too close together");
  }
  if (left == 2) {
    return invalid("the sides of the shape cross, as its corners do not follow its outline");
  }
  if (left == 1 || right == 1) {
    return invalid("the shape is concave: not a valid perspective quad");
  }
  if (warp::Homography::fromRectangle(1, 1, corners)) return {};
  return invalid("the corners are too close to a line");
}

}  // namespace kelvar
