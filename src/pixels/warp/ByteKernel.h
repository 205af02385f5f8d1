#pragma once

#include "pixels/warp/SampleRow.h"

namespace kelvar::warp {

/// The kernel for four 8-bit channels that are all weighted the same way: premultiplied or without
/// alpha. All arithmetic is in integers, so the bytes are the same on every instruction set.
///
/// Both kernels (the other is GenericKernel) have these operations. They require a source of at
/// least 2 by 2 pixels and rows of 1 to kChunk samples, and clamp positions to the source.
struct ByteKernel {
  /// The sums of addRow(). 16 bits hold the sum of 256 samples.
  using Sum = uint16_t;

  static constexpr bool takes(const PixelFormat& format) {
    return format.channels == 4 && format.component == ComponentType::UInt8 &&
           format.alpha != AlphaKind::Straight;
  }

  /// Writes the row's bilinear samples to `out`.
  static void sampleRow(const Source& source, const SampleRow& row, uint8_t* out);

  /// Like sampleRow(), for `rows` rows one unit apart and an axis-aligned map: a source row that
  /// several output rows share is interpolated once. The bytes are those of sampleRow().
  static void sampleRows(const Source& source, SampleRow row, int rows, const PixelView& out);

  /// Like sampleRow(), but adds each channel of each sample to `sums`.
  static void addRow(const Source& source, const SampleRow& row, Sum* sums);

  /// Writes `count` pixels of `format` to `out`. Pixel i is the total of the `each` sums that start
  /// at index i * each, divided by `samples`.
  static void meanOfGroups(const PixelFormat& format, const Sum* sums, int count, int each,
                           int samples, uint8_t* out);
};

}  // namespace kelvar::warp
