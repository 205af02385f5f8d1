#pragma once

#include <cstdint>

#include "pixels/Export.h"
#include "pixels/Result.h"

namespace kelvar {

/// Maximum length of an image's side, in pixels.
inline constexpr int kMaxImageSide = 32768;
/// Maximum size of an image's pixels in bytes, at four bytes per pixel. Files are checked against
/// both limits before their pixels are allocated.
inline constexpr int64_t kMaxImageBytes = int64_t{1} << 30;

/// Whether an image of this size, in pixels, is within the limits and not empty. False for NaN.
inline bool fitsImageLimits(double width, double height) {
  return width >= 1 && height >= 1 && width <= kMaxImageSide && height <= kMaxImageSide &&
         width * height * 4 <= double(kMaxImageBytes);
}

/// Fails when a file declares an image beyond the limits or without pixels.
KELVAR_PIXELS_EXPORT Result<void> validateImageSize(int64_t width, int64_t height);

}  // namespace kelvar
