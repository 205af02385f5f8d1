#pragma once

#include "geometry/warp/Homography.h"
#include "geometry/warp/Kernel.h"
#include "geometry/warp/PixelView.h"

namespace kelvar::warp {

/// Area filtering: where the map shrinks, a pixel is the mean of a grid of bilinear samples over
/// its own square, spaced at most a source pixel apart along each of its sides, so that the
/// filter's footprint is the very shape that the map gives the pixel in the source. Along the
/// quad's outline pixels carry their coverage. Where the map keeps or enlarges, whole pixels are
/// the plain samples at their centres, byte for byte.

/// Fills rows [first, last) of `dst`. `oversampling`: samples a pixel and axis at least.
void fillFiltered(const Source& source, const PixelView& dst, const Quad& quad, int oversampling,
                  int first, int last);

}  // namespace kelvar::warp
