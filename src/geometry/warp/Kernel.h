#pragma once

#include "geometry/warp/Homography.h"
#include "geometry/warp/PixelView.h"

namespace kelvar::warp {

/// What the kernel reads: a picture of at least 2 by 2 and at most 32768 by 32768 pixels, and the
/// map from destination coordinates to source coordinates in which pixel (i, j) has its centre at
/// (i, j).
struct Source {
  ConstPixelView pixels;
  Homography map;
};

/// The most samples that the kernel takes at a time.
constexpr int kChunk = 512;

/// Takes `count` (1 to kChunk) bilinear samples at the destination points (x + i * step, y),
/// i = 0, 1, …, and writes four bytes each to `out`. Positions outside the source are moved to its
/// edge. The map's denominator must keep its sign over the points. The bytes depend on the
/// arguments alone, not on the instruction set.
void sampleLine(const Source& source, double x, double step, double y, int count, uint8_t* out);

}  // namespace kelvar::warp
