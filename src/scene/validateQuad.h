#pragma once

#include "pixels/Export.h"
#include "pixels/Result.h"
#include "pixels/warp/Homography.h"

namespace kelvar {

/// Succeeds if and only if a design can be mapped onto these corners, that is, if
/// `Homography::fromRectangle` finds a map. The error message tells the user who drew them what is
/// wrong.
KELVAR_PIXELS_EXPORT Result<void> validateQuad(const warp::Quad& corners);

}  // namespace kelvar
