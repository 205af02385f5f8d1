#pragma once

#include <cstdint>
#include <span>

#include "pixels/Export.h"
#include "pixels/Result.h"
#include "pixels/codec/ByteSink.h"
#include "pixels/codec/DecodedImage.h"

namespace kelvar {

/// Decodes a WebP file. Fails if the file is truncated, damaged or an animation, or if it exceeds
/// the image limits. Of `threads` (0: one per processor) the decoder uses at most two.
KELVAR_PIXELS_EXPORT Result<DecodedImage> readWebP(std::span<const uint8_t> file, int threads = 0);

/// Encodes 8-bit BGRA, premultiplied, without loss. Fails if the image cannot be encoded: WebP
/// allows at most 16383 pixels per side. Of `threads` (0: one per processor) the encoder uses at
/// most two; the bytes do not depend on the number.
KELVAR_PIXELS_EXPORT Result<void> writeWebP(const ConstPixelView& image, const ByteSink& sink,
                                            int threads = 0);

}  // namespace kelvar
