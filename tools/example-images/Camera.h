#pragma once

#include <QPointF>

#include "Vec.h"

namespace kelvar::examples {

/// A camera with a small aperture: points in the plane of focus appear exactly where `project` puts
/// them; all others are blurred around that position.
struct Camera {
  /// x points right in the image, y into the room, z up in the image.
  Frame frame;
  /// Width and height of the image and the focal length, in pixels.
  int width = 0;
  int height = 0;
  double focal = 0;
  /// Radius of the lens in centimeters.
  double aperture = 0;
  /// A point on the plane of focus, and its normal. A tilted lens has a tilted plane.
  Vec focusPoint;
  Vec focusNormal;

  static Camera looking(Vec from, Vec at, double rollDegrees);

  /// Where a point of the room appears, in pixels from the top-left corner of the image.
  QPointF project(Vec point) const;

  /// The ray through a point of the image and a point of the lens (in the unit disk).
  Ray ray(double x, double y, double lensX, double lensY) const;
};

}  // namespace kelvar::examples
