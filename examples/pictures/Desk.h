#pragma once

#include "Scene.h"

namespace kelvar::examples {

/// A wooden desk whose top is z = 0.
Body desk();

/// A cup of coffee on a saucer; `turnDegrees` says where the handle points, counter-clockwise from
/// x.
std::vector<Body> cup(Vec where, double turnDegrees);

/// A cloth-bound book lying on the desk, its middle at `where`; `half` are its half sides.
Body book(Vec where, Vec half, double turnDegrees, Vec cloth);

/// A pencil on the desk whose point is at `where`.
Body pencil(Vec where, double turnDegrees, Vec lacquer);

}  // namespace kelvar::examples
