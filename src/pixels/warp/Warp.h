#pragma once

#include "pixels/Export.h"
#include "pixels/PixelView.h"
#include "pixels/warp/Homography.h"

namespace kelvar::warp {

/// The largest width and height of source and destination, in pixels.
constexpr int kMaxSide = 32768;

/// How a destination pixel gets its color. docs/warp.md has the arithmetic.
enum class Sampling {
  /// The bilinear sample at the pixel's center; zero if the center lies outside the quad.
  Bilinear,
  /// Area filtering where the map shrinks and coverage along the edges, otherwise as `Bilinear`.
  Best,
};

struct Options {
  Sampling sampling = Sampling::Bilinear;
  /// The minimum number of samples per pixel along each axis; clamped to 1 to 16. With more than 1,
  /// a pixel is the mean of a grid of samples even where the map does not shrink.
  int oversampling = 1;
  /// Threads to use, including the caller's; 0 for one per processor. Does not affect the result.
  int threads = 0;
};

/// Fills all of `dst` with `src` in perspective. The corners of `src` go to `quad`, given in pixels
/// of `dst`, y down, where pixel (i, j) has its center at (i + 0.5, j + 0.5).
///
/// Both views have the same valid format, are aligned to its component type and do not overlap.
/// Float components are finite. The result has the format of the source:
///
/// - A straight source is filtered as if it were premultiplied, so that colors of transparent
///   pixels do not bleed. The result is straight again; its color is zero where its alpha is.
/// - Outside the quad every component is zero, which is transparent if there is alpha. If there is
///   none, and you want to blend the pixels along the edge, also warp an image of one
///   single-channel pixel with the maximum value onto the same quad with the same options: this
///   gives each pixel's coverage, by which `Best` has multiplied the colors.
///
/// The exact sample is the bilinear one at the exact position, with edge pixels repeated. At each
/// center at least 0.01 pixels inside the quad, `Bilinear` is within
///
/// - 1 of 255 of it for 8-bit components,
/// - 1 of 65535 for 16-bit components,
/// - 2^-20 of the largest magnitude among the four neighboring pixels for floats; for the colors
///   of a straight source, only if no nonzero alpha among these is less than 1/4096 of the largest.
///
/// For pixels wholly inside the quad, `Best` is within the same bounds of the mean of its exact
/// samples, except that the bound is 2 of 255 for four 8-bit channels that are not straight. An
/// image mapped onto its own rectangle, or moved by whole pixels, is copied byte for byte. The
/// result is the same for any number of threads and any instruction set, and no color of a
/// premultiplied result exceeds its alpha unless it did in the source.
///
/// Returns false, with all of `dst` zero, if the quad has no map (concave, crossed, collinear or
/// not finite), if `src` is empty, or if a side exceeds kMaxSide.
[[nodiscard]] KELVAR_PIXELS_EXPORT bool warp(const ConstPixelView& src, const PixelView& dst,
                                             const Quad& quad, const Options& options = {});

}  // namespace kelvar::warp
