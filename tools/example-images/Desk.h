#pragma once

#include "Scene.h"

namespace kelvar::examples {

/// A wooden desk with its top at z = 0.
Body desk();

/// A cup of coffee on a saucer; `turnDegrees` is the direction of the handle, counterclockwise from
/// x.
std::vector<Body> cup(Vec where, double turnDegrees);

/// A cloth-bound book on the desk, centered at `where`; `half` is half of each side.
Body book(Vec where, Vec half, double turnDegrees, Vec cloth);

/// A pencil on the desk with its tip at `where`.
Body pencil(Vec where, double turnDegrees, Vec lacquer);

}  // namespace kelvar::examples
