#pragma once

#include "pixels/PixelView.h"

namespace kelvar {

/// Resampling of 8-bit pixels, either premultiplied or with a single channel, to the size of the
/// target. Both views have the same format and do not overlap.

/// Each pixel becomes the mean of the area that it covers. `to` is at most as wide and as high as
/// `from`.
void shrink(const ConstPixelView& from, const PixelView& to);

/// Linear interpolation between pixel centers, the edge repeated. `to` is at least as wide and as
/// high as `from`.
void enlarge(const ConstPixelView& from, const PixelView& to);

}  // namespace kelvar
