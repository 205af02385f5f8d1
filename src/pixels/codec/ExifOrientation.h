#pragma once

#include <cstdint>
#include <span>

#include "pixels/PixelBuffer.h"
#include "pixels/Result.h"

namespace kelvar {

/// The orientation that EXIF data declares, 1 to 8. If the data declares none or is damaged, 1,
/// which means upright. `exif` begins with the TIFF header. Source: Exif 2.3, section 4.6.
int exifOrientation(std::span<const uint8_t> exif);

/// Turns an image with this orientation upright. The image must have four 8-bit channels.
Result<PixelBuffer> turnedUpright(PixelBuffer image, int orientation);

}  // namespace kelvar
