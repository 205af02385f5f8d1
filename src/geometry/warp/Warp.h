#pragma once

#include "geometry/warp/Homography.h"
#include "geometry/warp/PixelView.h"
#include "platform/Export.h"

namespace kelvar::warp {

/// How a destination pixel gets its colour. docs/warp.md has the arithmetic.
enum class Sampling {
  /// The bilinear sample at the pixel's centre; transparent when the centre lies outside.
  Bilinear,
  /// Area filtering where the map shrinks, coverage along the edges, else as `Bilinear`.
  Best,
};

struct Options {
  Sampling sampling = Sampling::Bilinear;
  /// Samples a pixel and axis at least, 1 to 16. More than 1 takes the mean of a grid of samples
  /// even where the map does not shrink.
  int oversampling = 1;
  /// Threads to use, the caller's included; 0 for one each processor. The bytes do not depend on
  /// it.
  int threads = 0;
};

/// Fills all of `dst` with `src` in perspective: the corners of `src` land on `quad`, given in
/// pixels of `dst`, y down, pixel (i, j) having its centre at (i + 0.5, j + 0.5). What lies
/// outside the quad becomes transparent (four zero bytes). The views must not overlap.
///
/// Default sampling: within 1 of 255 of the exact bilinear sample (edge pixels repeated) at every
/// centre at least 0.01 pixels inside; an image mapped onto its own rectangle comes back byte for
/// byte; the same bytes for any number of threads and any instruction set.
///
/// False, and `dst` all transparent, when the quad has no map (concave, crossed, collinear or
/// not finite) or `src` is empty. No side may exceed 32768 pixels.
[[nodiscard]] KELVAR_EXPORT bool warp(const ConstPixelView& src, const PixelView& dst,
                                      const Quad& quad, const Options& options = {});

}  // namespace kelvar::warp
