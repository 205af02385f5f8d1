#pragma once

#include <stop_token>
#include <vector>

#include "pixels/PixelView.h"

namespace kelvar {

/// Convolves 8-bit or float pixels in place with `weights` along the rows and then along the
/// columns. The number of weights is odd, and they add up to 1. Pixels outside the image count as
/// 0. Sums are floats; for 8-bit pixels, they are rounded to nearest once, at the end. The image is
/// left partly convolved once `stop` is requested.
void convolve(const PixelView& pixels, const std::vector<float>& weights,
              const std::stop_token& stop);

}  // namespace kelvar
