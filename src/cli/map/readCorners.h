#pragma once

#include <string>

#include "pixels/warp/Homography.h"

namespace kelvar::cli {

/// Reads "x,y x,y x,y x,y" as four corners that a design can be mapped onto. Throws a
/// `CommandError` that says what is wrong with them.
warp::Quad readCorners(const std::string& text);

}  // namespace kelvar::cli
