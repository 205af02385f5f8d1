#pragma once

#include <vector>

#include "pixels/warp/Homography.h"
#include "platform/Export.h"
#include "platform/image/BezierPath.h"

namespace kelvar {

/// The corners of the path's outline in drawing order, curves flattened, up to the first close. A
/// line to the current point adds nothing, and a close removes a last point that equals the first.
/// Every move, wherever it occurs, goes to the very first point of the path.
KELVAR_EXPORT std::vector<warp::Point> cornersOfPath(const BezierPath& path);

}  // namespace kelvar
