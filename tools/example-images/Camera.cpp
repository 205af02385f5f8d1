#include "Camera.h"

#include <numbers>

namespace kelvar::examples {

Camera Camera::looking(Vec from, Vec at, double rollDegrees) {
  const double roll = rollDegrees * std::numbers::pi / 180;
  const Vec forward = normalized(at - from);
  const Vec right = normalized(cross(forward, Vec{0, 0, 1}));
  const Vec up = cross(right, forward);
  Camera camera;
  camera.frame = {from, right * std::cos(roll) + up * std::sin(roll), forward,
                  up * std::cos(roll) - right * std::sin(roll)};
  camera.focusPoint = at;
  camera.focusNormal = forward;
  return camera;
}

QPointF Camera::project(Vec point) const {
  const Vec p = frame.pointFromRoom(point);
  return {width / 2.0 + focal * p.x / p.y, height / 2.0 - focal * p.z / p.y};
}

Ray Camera::ray(double x, double y, double lensX, double lensY) const {
  const Vec through =
      frame.directionToRoom({(x - width / 2.0) / focal, 1, (height / 2.0 - y) / focal});
  const double slope = dot(through, focusNormal);
  const double depth = dot(focusPoint - frame.origin, focusNormal) / slope;
  // A plane of focus behind the camera is treated as one far away.
  const Vec sharp = frame.origin + through * (depth > 0 ? depth : 1e4);
  const Vec origin = frame.pointToRoom({lensX * aperture, 0, lensY * aperture});
  return {origin, normalized(sharp - origin)};
}

}  // namespace kelvar::examples
