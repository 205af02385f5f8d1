#pragma once

#include <array>

#include "Scene.h"

namespace kelvar::examples {

/// A fictional phone: metal frame, glass front, a screen with rounded corners.
///
/// Its coordinates: x to the right and y to the top of the screen, z out of the screen, the origin
/// in the middle of the body.
struct Phone {
  static constexpr double kScreenWidth = 6.5;
  static constexpr double kScreenHeight = kScreenWidth * 2532 / 1170;
  static constexpr double kScreenRadius = 0.86;

  Frame frame;

  /// Stands on its lower edge on the desk (z = 0), leaning back: `tiltDegrees` 0 lies flat, 90
  /// stands upright. `turnDegrees` turns it on the desk, counterclockwise from above.
  static Phone leaning(Vec where, double turnDegrees, double tiltDegrees);

  Body body() const;

  /// Top-left, top-right, bottom-right and bottom-left corner of the screen in the room, without
  /// rounding.
  std::array<Vec, 4> screenCorners() const;
};

}  // namespace kelvar::examples
