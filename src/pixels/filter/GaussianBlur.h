#pragma once

#include <stop_token>

#include "pixels/Export.h"
#include "pixels/PixelView.h"

namespace kelvar {

/// Up to this `sigma`, nothing is blurred. In all of these functions, `sigma` is the standard
/// deviation of the Gaussian in pixels. It has no default and no upper limit, though memory and
/// time grow with the margin that a caller adds.
inline constexpr double kMinBlurSigma = 0.05;

/// Up to this `sigma`, the kernel is the sampled Gaussian itself. Above it, 8-bit images are first
/// halved as often as needed: the result cannot be distinguished from the exact one, and wide blurs
/// stay fast. Float images are always blurred exactly.
inline constexpr double kMaxExactBlurSigma = 20;

/// Distance in whole pixels beyond which a blur has no visible effect: three sigma.
KELVAR_PIXELS_EXPORT int blurReach(double sigma);

/// Blurs 8-bit or float pixels in place, either premultiplied or with a single channel. Pixels
/// outside the image count as 0. The image is left partly blurred once `stop` is requested, and
/// unblurred if there is no memory for halving.
KELVAR_PIXELS_EXPORT void blur(const PixelView& pixels, double sigma,
                               const std::stop_token& stop = {});

}  // namespace kelvar
