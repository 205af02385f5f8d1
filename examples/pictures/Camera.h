#pragma once

#include <QPointF>

#include "Vec.h"

namespace kelvar::examples {

/// A pinhole camera whose lens opens a little: what lies in the plane of focus is drawn exactly
/// where `project` says, the rest is blurred around it.
struct Camera {
  /// x to the right of the picture, y into the room, z up in the picture.
  Frame frame;
  /// Width and height of the picture and the focal length, all in pixels.
  int width = 0;
  int height = 0;
  double focal = 0;
  /// Radius of the lens in centimetres.
  double aperture = 0;
  /// A point of the plane of focus and its normal. A tilted lens has a tilted plane.
  Vec focusPoint;
  Vec focusNormal;

  static Camera looking(Vec from, Vec at, double rollDegrees);

  /// Where a point of the room appears, in pixels from the picture's top-left corner.
  QPointF project(Vec point) const;

  /// The ray through a place of the picture and a place of the lens (in the unit disk).
  Ray ray(double x, double y, double lensX, double lensY) const;
};

}  // namespace kelvar::examples
