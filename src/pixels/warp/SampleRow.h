#pragma once

#include "pixels/PixelView.h"
#include "pixels/warp/Homography.h"

namespace kelvar::warp {

/// Rows are sampled in chunks of at most this many samples.
constexpr int kChunk = 512;

/// The input of the kernels: an image of 2 by 2 to 32768 by 32768 pixels, and the map from
/// destination to source coordinates. In source coordinates, pixel (i, j) has its center at (i, j).
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
  /// Distance to the row that will be sampled next. The source of later rows is prefetched.
  double pitch = 1;
};

/// The map along a row: sample i is at ((xn0 + i xn1) / w, (yn0 + i yn1) / w) in the source, with
/// w = w0 + i w1.
struct MappedRow {
  double xn0, xn1, yn0, yn1, w0, w1;

  MappedRow(const Homography& map, const SampleRow& row)
      : xn0(map.m[0] * row.x + map.m[1] * row.y + map.m[2]),
        xn1(map.m[0] * row.step),
        yn0(map.m[3] * row.x + map.m[4] * row.y + map.m[5]),
        yn1(map.m[3] * row.step),
        w0(map.m[6] * row.x + map.m[7] * row.y + map.m[8]),
        w1(map.m[6] * row.step) {}
};

}  // namespace kelvar::warp
