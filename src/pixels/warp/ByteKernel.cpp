#include "pixels/warp/ByteKernel.h"

#include <algorithm>
#include <cassert>

#define HWY_WANT_AVX3_DL
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "pixels/warp/ByteKernel.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

#include "pixels/warp/BytePositions-inl.h"
#include "pixels/warp/ByteRows-inl.h"
#include "pixels/warp/ByteSamples-inl.h"
#include "pixels/warp/ByteWindows-inl.h"

HWY_BEFORE_NAMESPACE();
namespace kelvar::warp::HWY_NAMESPACE {

/// Number of rows to prefetch.
constexpr int kAhead = 6;

/// The distance in bytes from the source of a row to that of the row kAhead later.
ptrdiff_t aheadOf(const Source& source, const SampleRow& row) {
  const Point here{row.x + (row.count - 1) * row.step / 2, row.y};
  const Point from = source.map.map(here);
  const Point to = source.map.map({here.x, here.y + kAhead * row.pitch});
  // In this order of arguments NaN becomes a number.
  const auto whole = [](double d) { return ptrdiff_t(std::min(1e4, std::max(-1e4, d))); };
  return whole(to.y - from.y) * source.pixels.stride + whole(to.x - from.x) * 4;
}

void SampleByteRow(const Source& source, const SampleRow& row, uint8_t* out) {
  const int count = row.count;
  assert(source.pixels.width >= 2 && source.pixels.height >= 2 && count >= 1 && count <= kChunk);
  Positions positions;
  const bool ordered = computePositions(MappedRow(source.map, row), count, &positions);
  const ptrdiff_t ahead = aheadOf(source, row);
#if HWY_TARGET == HWY_AVX3_DL
  const Course course = courseOf(positions, count);
#endif
  for (int t = 0; t < count; t += kBlock) {
    const Block block{positions.x + t, positions.y + t};
    const int n = std::min(kBlock, count - t);
    keepInside(source.pixels, block, ordered);
#if HWY_TARGET == HWY_AVX3_DL
    if (ordered && sampleWindows(source.pixels, block, course, ahead, n, out + t * 4)) continue;
#endif
    sampleScattered(source.pixels, block, ahead, n, out + t * 4);
  }
}

void SampleByteRows(const Source& source, SampleRow row, int rows, const PixelView& out) {
  const int count = row.count;
  const MappedRow first(source.map, row);
  Positions positions;
  computePositions(first, count, &positions);
  for (int t = 0; t < count; t += kBlock) {
    keepInside(source.pixels, {positions.x + t, positions.y + t}, true);
  }
  RowSums sums(source.pixels, positions.x, count);
  const int32_t max = maxPosition(source.pixels.height);
  const bool byRuns = runLength(first, count) != 0;
  for (int i = 0; i < rows; ++i, ++row.y) {
    const int32_t y = rowPosition(MappedRow(source.map, row), byRuns);
    blendRow(sums, std::min(std::max(y, 0), max), count, out.row(i));
  }
}

void AddByteRow(const Source& source, const SampleRow& row, uint16_t* sums) {
  alignas(64) uint8_t line[kChunk * 4];
  SampleByteRow(source, row, line);
  for (int i = 0; i < row.count * 4; ++i) sums[i] = uint16_t(sums[i] + line[i]);
}

/// `kEach` is `each` where it is known when compiling, else 0.
template <int kEach>
HWY_INLINE void meanOf(const uint16_t* sums, int count, int each, uint32_t reciprocal,
                       uint8_t* out) {
  if (kEach != 0) each = kEach;
  for (int i = 0; i < count; ++i) {
    uint32_t total[4] = {};
    for (int k = 0; k < each; ++k) {
      for (int c = 0; c < 4; ++c) total[c] += sums[(i * each + k) * 4 + c];
    }
    for (int c = 0; c < 4; ++c) {
      out[i * 4 + c] = uint8_t((total[c] * reciprocal + (1u << 23)) >> 24);
    }
  }
}

void MeanOfByteGroups(const uint16_t* sums, int count, int each, int samples, uint8_t* out) {
  const uint32_t reciprocal = uint32_t((1u << 24) / double(samples) + 0.5);
  switch (each) {
    case 1:
      return meanOf<1>(sums, count, each, reciprocal, out);
    case 2:
      return meanOf<2>(sums, count, each, reciprocal, out);
    case 3:
      return meanOf<3>(sums, count, each, reciprocal, out);
    case 4:
      return meanOf<4>(sums, count, each, reciprocal, out);
    default:
      return meanOf<0>(sums, count, each, reciprocal, out);
  }
}

}  // namespace kelvar::warp::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kelvar::warp {

HWY_EXPORT(SampleByteRow);
HWY_EXPORT(SampleByteRows);
HWY_EXPORT(AddByteRow);
HWY_EXPORT(MeanOfByteGroups);

void ByteKernel::sampleRow(const Source& source, const SampleRow& row, uint8_t* out) {
  HWY_DYNAMIC_DISPATCH(SampleByteRow)(source, row, out);
}

void ByteKernel::sampleRows(const Source& source, SampleRow row, int rows, const PixelView& out) {
  HWY_DYNAMIC_DISPATCH(SampleByteRows)(source, row, rows, out);
}

void ByteKernel::addRow(const Source& source, const SampleRow& row, Sum* sums) {
  HWY_DYNAMIC_DISPATCH(AddByteRow)(source, row, sums);
}

void ByteKernel::meanOfGroups(const PixelFormat&, const Sum* sums, int count, int each, int samples,
                              uint8_t* out) {
  HWY_DYNAMIC_DISPATCH(MeanOfByteGroups)(sums, count, each, samples, out);
}

}  // namespace kelvar::warp
#endif
