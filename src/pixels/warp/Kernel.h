#pragma once

#include "pixels/warp/ByteKernel.h"
#include "pixels/warp/GenericKernel.h"

namespace kelvar::warp {

/// Calls `use` with the kernel for the format: ByteKernel if it takes the format, since it is
/// several times as fast.
template <typename Use>
void withKernel(const PixelFormat& format, const Use& use) {
  if (ByteKernel::takes(format)) return use(ByteKernel());
  use(GenericKernel());
}

/// Writes a row of bilinear samples in the source's format.
inline void sampleRow(const Source& source, const SampleRow& row, uint8_t* out) {
  withKernel(source.pixels.format, [&](auto kernel) { kernel.sampleRow(source, row, out); });
}

}  // namespace kelvar::warp
