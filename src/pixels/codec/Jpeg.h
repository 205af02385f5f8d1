#pragma once

#include <cstdint>
#include <span>

#include "pixels/Export.h"
#include "pixels/Result.h"
#include "pixels/codec/ByteSink.h"
#include "pixels/codec/DecodedImage.h"

namespace kelvar {

/// Decodes a JPEG file, opaque and turned upright. Fails if the file is truncated or damaged, even
/// if viewers would show part of the image, or if it exceeds the image limits.
KELVAR_PIXELS_EXPORT Result<DecodedImage> readJpeg(std::span<const uint8_t> file);

/// Encodes 8-bit BGRA, premultiplied, flattened over white, at quality 92 without chroma
/// subsampling.
KELVAR_PIXELS_EXPORT Result<void> writeJpeg(const ConstPixelView& image, const ByteSink& sink);

}  // namespace kelvar
