#pragma once

#include <cstdint>
#include <vector>

#include "pixels/PixelBuffer.h"

namespace kelvar {

/// A decoded image file.
struct DecodedImage {
  /// 8-bit BGRA, premultiplied.
  PixelBuffer pixels;
  /// The ICC profile that the colors belong to; empty if the file has none, which means sRGB.
  std::vector<uint8_t> iccProfile;
};

}  // namespace kelvar
