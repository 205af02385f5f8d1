#pragma once

#include "pixels/PixelView.h"
#include "pixels/warp/Homography.h"
#include "pixels/warp/SampleRow.h"

namespace kelvar::warp {

/// Area filtering: where the map shrinks, a pixel is the mean of a grid of bilinear samples over
/// its own square, at most one source pixel apart along each of its sides. The filter's footprint
/// is therefore exactly the pixel's shape as mapped to the source. Pixels along the quad's outline
/// are multiplied by their coverage. Where the map does not shrink, pixels wholly inside are the
/// bilinear samples at their centers, byte for byte.

/// Fills rows [first, last) of `dst`. `oversampling`: minimum number of samples per pixel along
/// each axis.
void fillFiltered(const Source& source, const PixelView& dst, const Quad& quad, int oversampling,
                  int first, int last);

}  // namespace kelvar::warp
