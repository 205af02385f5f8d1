#pragma once

#include "geometry/warp/Homography.h"
#include "geometry/warp/PixelView.h"

namespace kelvar::warp {

/// The most samples that the kernel takes at a time.
constexpr int kChunk = 512;

/// What the kernel reads: a picture of at least 2 by 2 and at most 32768 by 32768 pixels, and the
/// map from destination coordinates to source coordinates in which pixel (i, j) has its centre at
/// (i, j).
struct Source {
  ConstPixelView pixels;
  Homography map;
};

/// Samples at the destination points (x + i * step, y), i = 0, 1, … count - 1, with `count` from 1
/// to kChunk.
struct SampleRow {
  double x;
  double step;
  double y;
  int count;
  /// How far below the next row lies that will be asked for: what it needs is fetched ahead.
  double pitch = 1;
};

/// Takes bilinear samples and writes four bytes each to `out`. Positions outside the source are
/// moved to its edge. The bytes depend on the arguments alone, not on the instruction set.
void sampleLine(const Source& source, const SampleRow& row, uint8_t* out);

/// As sampleLine, for `rows` rows, each one unit below the last, and a map along the axes: what two
/// output rows take from one source row is interpolated once. The bytes are sampleLine's.
void sampleRows(const Source& source, SampleRow row, int rows, const PixelView& out);

/// As sampleLine, but adds the samples' bytes to `sums`, four a sample.
void addLine(const Source& source, const SampleRow& row, uint16_t* sums);

/// Means of sums: pixel i of `count` is the rounded total of the `each` neighbouring sums from
/// i * each on, over `samples`.
void meanOfGroups(const uint16_t* sums, int count, int each, int samples, uint8_t* out);

}  // namespace kelvar::warp
