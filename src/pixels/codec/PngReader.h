#pragma once

#include <cstdint>
#include <span>

#include "pixels/Export.h"
#include "pixels/Result.h"
#include "pixels/codec/DecodedImage.h"

namespace kelvar {

/// Decodes a PNG file of any kind. Fails if the file is truncated or damaged, or if it exceeds the
/// image limits. Checksums are verified; only those of chunks that the pixels do not depend on may
/// be wrong.
///
/// Most files have 8 bits per channel and are not interlaced. They take a fast path on two of
/// `threads` threads (0: one per processor): one inflates with ISA-L while the other undoes the
/// filters and converts. Besides `file` and the pixels, it uses less than two megabytes of memory.
/// All other files go through libspng.
KELVAR_PIXELS_EXPORT Result<DecodedImage> readPng(std::span<const uint8_t> file, int threads = 0);

}  // namespace kelvar
