// Samples of an axis-aligned map. Included for each target.
//
// All output rows have the same x positions, and neighboring ones often share source rows. So each
// source row is interpolated horizontally once, and an output row is a blend of two such rows.

#if defined(KELVAR_PIXELS_WARP_BYTE_ROWS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef KELVAR_PIXELS_WARP_BYTE_ROWS_INL_H_
#undef KELVAR_PIXELS_WARP_BYTE_ROWS_INL_H_
#else
#define KELVAR_PIXELS_WARP_BYTE_ROWS_INL_H_
#endif

#include "pixels/warp/ByteSamples-inl.h"

HWY_BEFORE_NAMESPACE();
namespace kelvar::warp::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

/// Number of source rows to prefetch.
constexpr int kRowsAhead = 4;

/// The horizontal sums of the two source rows in use, in the order that the target's blend
/// requires.
class RowSums {
 public:
  RowSums(const ConstPixelView& pixels, const int32_t* x, int count)
      : pixels_(pixels), x_(x), count_(count) {}

  const int16_t* of(int y) {
    SourceRow& row = rows_[y & 1];
    if (row.y != y) fill(pixels_.row(y), row.sums);
    row.y = y;
    return row.sums;
  }

 private:
  struct SourceRow {
    int y = -1;
    alignas(64) int16_t sums[kChunk * 4];
  };

  void fill(const uint8_t* row, int16_t* sums) const;

  const ConstPixelView& pixels_;
  const int32_t* x_;
  int count_;
  SourceRow rows_[2];
};

#if HWY_TARGET == HWY_SCALAR

inline void RowSums::fill(const uint8_t* row, int16_t* sums) const {
  for (int i = 0; i < count_; ++i) {
    const uint8_t* pixel = row + ptrdiff_t(x_[i] >> kPositionBits) * 4;
    const int right = (((x_[i] & 0xFFFF) >> 1) * 255 + 0x4000) >> 15, left = 255 - right;
    for (int c = 0; c < 4; ++c) {
      sums[i * 4 + c] = int16_t((pixel[c] - 128) * left + (pixel[c + 4] - 128) * right);
    }
  }
}

/// Blends one output row from the two source rows around `y`.
inline void blendRow(RowSums& sums, int32_t y, int count, uint8_t* out) {
  const int16_t* top = sums.of(y >> kPositionBits);
  const int16_t* bottom = sums.of((y >> kPositionBits) + 1);
  for (int i = 0; i < count * 4; ++i) out[i] = blended(top[i], bottom[i], (y & 0xFFFF) >> 1);
}

#else

inline void RowSums::fill(const uint8_t* row, int16_t* sums) const {
  const I32 d;
  const U8 d8;
  const U32 d32;
  const I16 d16;
  const int n = int(hn::Lanes(d));
  for (int t = 0; t < count_; t += n) {
    const auto at = [&](int i) { return row + ptrdiff_t(x_[t + i] >> kPositionBits) * 4; };
    hwy::Prefetch(at(0) + kRowsAhead * pixels_.stride);
    hwy::Prefetch(at(n / 2) + kRowsAhead * pixels_.stride);
    const auto weights = weightsOf(hn::Load(d, x_ + t));
    const auto half = [&](int first, auto w) {
      return mulPairs(hn::BitCast(d8, w), channelPairs(loadPairs(at, first)));
    };
    hn::Store(half(0, hn::InterleaveLower(d32, weights, weights)), d16, sums + t * 4);
    hn::Store(half(2, hn::InterleaveUpper(d32, weights, weights)), d16, sums + t * 4 + n * 2);
  }
}

inline void blendRow(RowSums& sums, int32_t y, int count, uint8_t* out) {
  const I16 d;
  const U8 d8;
  const int n = int(hn::Lanes(I32()));
  const int16_t* top = sums.of(y >> kPositionBits);
  const int16_t* bottom = sums.of((y >> kPositionBits) + 1);
  const auto fraction = hn::Set(d, int16_t((y & 0xFFFF) >> 1));
  const auto half = [&](int i) {
    return blendRows(hn::Load(d, top + i), hn::Load(d, bottom + i), fraction);
  };
  const auto samples = [&](int t) { return pack(half(t * 4), half(t * 4 + n * 2)); };
  int t = 0;
  for (; t + n <= count; t += n) hn::StoreU(samples(t), d8, out + t * 4);
  if (t == count) return;
  alignas(64) uint8_t tail[64];
  hn::Store(samples(t), d8, tail);
  std::memcpy(out + t * 4, tail, size_t(count - t) * 4);
}

#endif  // HWY_TARGET == HWY_SCALAR

}  // namespace kelvar::warp::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // toggled guard
