#pragma once

#include <string>

#include "geometry/PointList.h"

namespace kelvar::app {

/// Reads "x,y x,y x,y x,y" as four corners that a picture can be mapped onto. Throws a `Failure`
/// of misuse that says what is wrong with them.
PointList readCorners(const std::string& text);

}  // namespace kelvar::app
