#pragma once

#include "pixels/Export.h"
#include "pixels/PixelView.h"
#include "pixels/codec/ByteSink.h"

namespace kelvar {

/// Encodes 8-bit BGRA, premultiplied, as a PNG: RGB when every pixel is opaque; RGB with one color
/// declared transparent when every pixel is opaque or transparent; else RGBA.
///
/// Bands of rows are filtered and deflated on up to `threads` threads, including the caller's (0:
/// one per processor), and written in order as they finish; this takes a few megabytes of memory,
/// whatever the size of the image. The same pixels always produce the same file, with any number of
/// threads, because documents name images by their hashes. Each band uses the filter whose
/// differences have the lowest entropy. Fails only if the sink does.
KELVAR_PIXELS_EXPORT Result<void> writePng(const ConstPixelView& image, const ByteSink& sink,
                                           int threads = 0);

}  // namespace kelvar
