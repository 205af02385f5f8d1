#pragma once

#include "pixels/warp/SampleRow.h"

namespace kelvar::warp {

/// The kernel for every pixel format: exact positions and all arithmetic in doubles, rounded once
/// at the end. IEEE 754 defines the result of each operation, and no operations are fused, so the
/// bytes are the same on every instruction set. Straight colors are weighted by their alpha.
///
/// The operations are those of ByteKernel.
struct GenericKernel {
  /// The sums of addRow(). Straight colors are multiplied by alpha.
  using Sum = double;

  static void sampleRow(const Source& source, const SampleRow& row, uint8_t* out);

  static void addRow(const Source& source, const SampleRow& row, Sum* sums);

  static void meanOfGroups(const PixelFormat& format, const Sum* sums, int count, int each,
                           int samples, uint8_t* out);
};

}  // namespace kelvar::warp
