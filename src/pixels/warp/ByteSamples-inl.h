// Bilinear samples of four-byte pixels, each loaded by itself. Included for each target.
//
// The arithmetic is in docs/warp.md: horizontal weights of 8 bits, exact sums in 16 bits, vertical
// weights of 15 bits.

#if defined(KELVAR_PIXELS_WARP_BYTE_SAMPLES_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef KELVAR_PIXELS_WARP_BYTE_SAMPLES_INL_H_
#undef KELVAR_PIXELS_WARP_BYTE_SAMPLES_INL_H_
#else
#define KELVAR_PIXELS_WARP_BYTE_SAMPLES_INL_H_
#endif

#include <hwy/cache_control.h>
#include <hwy/highway.h>

#include <cstdint>
#include <cstring>

#include "pixels/warp/BytePositions-inl.h"

HWY_BEFORE_NAMESPACE();
namespace kelvar::warp::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

using U8 = hn::ScalableTag<uint8_t>;
using I16 = hn::ScalableTag<int16_t>;
using U16 = hn::ScalableTag<uint16_t>;
using U32 = hn::ScalableTag<uint32_t>;
using VU8 = hn::Vec<U8>;
using VI16 = hn::Vec<I16>;
using VU16 = hn::Vec<U16>;

#if HWY_TARGET == HWY_SCALAR

/// Blends the horizontal sums of two rows to a byte. `lower` is the weight of `bottom` in 15 bits.
/// Both products are rounded. The weight of `top` is negated, because MulFixedPoint15, which the
/// vector code uses, takes -0x8000 but not 0x8000.
HWY_INLINE uint8_t blended(int top, int bottom, int lower) {
  const int sum = ((bottom * lower + 0x4000) >> 15) - ((top * (lower - 0x8000) + 0x4000) >> 15);
  return uint8_t((uint32_t(sum + 0x8000) * 257) >> 16);
}

/// The samples of a block, one by one. Every other path computes the same bytes.
inline void sampleScattered(const ConstPixelView& pixels, const Block& block, ptrdiff_t, int count,
                            uint8_t* out) {
  for (int i = 0; i < count; ++i) {
    const uint8_t* top =
        pixels.row(block.y[i] >> kPositionBits) + ptrdiff_t(block.x[i] >> kPositionBits) * 4;
    const uint8_t* bottom = top + pixels.stride;
    const int right = (((block.x[i] & 0xFFFF) >> 1) * 255 + 0x4000) >> 15, left = 255 - right;
    const int lower = (block.y[i] & 0xFFFF) >> 1;
    for (int c = 0; c < 4; ++c) {
      const int t = (top[c] - 128) * left + (top[c + 4] - 128) * right;
      const int b = (bottom[c] - 128) * left + (bottom[c + 4] - 128) * right;
      out[i * 4 + c] = blended(t, b, lower);
    }
  }
}

#else

/// Products of unsigned weights and signed values, added in pairs. Exact for the operands used.
HWY_INLINE VI16 mulPairs(VU8 weights, VU8 values) {
#if HWY_TARGET == HWY_AVX3 || HWY_TARGET == HWY_AVX3_DL
  return VI16{_mm512_maddubs_epi16(weights.raw, values.raw)};
#elif HWY_TARGET == HWY_AVX2
  return VI16{_mm256_maddubs_epi16(weights.raw, values.raw)};
#elif HWY_TARGET == HWY_SSE4 || HWY_TARGET == HWY_SSSE3
  return VI16{_mm_maddubs_epi16(weights.raw, values.raw)};
#else
  const I16 d;
  const auto w = hn::BitCast(d, weights), v = hn::BitCast(d, values);
  const auto low = hn::Set(d, 0xFF);
  const auto even = hn::Mul(hn::And(w, low), hn::ShiftRight<8>(hn::ShiftLeft<8>(v)));
  const auto odd =
      hn::Mul(hn::BitCast(d, hn::ShiftRight<8>(hn::BitCast(U16(), w))), hn::ShiftRight<8>(v));
  return hn::Add(even, odd);
#endif
}

/// Blends the horizontal sums of two rows, 255 (pixel - 128), to 0 … 255 in 16 bits. `fraction` is
/// the weight of `bottom` in 15 bits.
HWY_INLINE VU16 blendRows(VI16 top, VI16 bottom, VI16 fraction) {
  const I16 d;
  const auto complement = hn::Xor(fraction, hn::Set(d, int16_t(-32768)));
  const auto sum =
      hn::Sub(hn::MulFixedPoint15(bottom, fraction), hn::MulFixedPoint15(top, complement));
  // (s + 128) * 257 / 65536 is s / 255, rounded.
  const U16 du;
  return hn::MulHigh(hn::Xor(hn::BitCast(du, sum), hn::Set(du, 0x8000)), hn::Set(du, 257));
}

/// Packs 16-bit values to bytes; in each 128-bit block those of `a` come before those of `b`.
HWY_INLINE VU8 pack(VU16 a, VU16 b) {
#if HWY_TARGET == HWY_AVX3 || HWY_TARGET == HWY_AVX3_DL
  return VU8{_mm512_packus_epi16(a.raw, b.raw)};
#elif HWY_TARGET == HWY_AVX2
  return VU8{_mm256_packus_epi16(a.raw, b.raw)};
#elif HWY_TARGET == HWY_SSE4 || HWY_TARGET == HWY_SSSE3
  return VU8{_mm_packus_epi16(a.raw, b.raw)};
#else
  const U8 d;
  alignas(16) static constexpr uint8_t kOrder[16] = {0, 2, 4, 6, 8, 10, 12, 14,
                                                     1, 3, 5, 7, 9, 11, 13, 15};
  const auto both = hn::Or(a, hn::ShiftLeft<8>(b));
  return hn::TableLookupBytes(hn::BitCast(d, both), hn::LoadDup128(d, kOrder));
#endif
}

/// Loads two neighboring pixels of a row, 8 bytes from `at(sample)`, for the samples `first` and
/// `first + 1` in each 128-bit block; the next block's samples are 4 further on.
template <typename At>
HWY_INLINE VU8 loadPairs(const At& at, int first) {
  const hn::CappedTag<uint64_t, 2> d;
  const U8 d8;
  const auto two = [&](int i) {
    const hn::CappedTag<uint64_t, 1> half;
    const auto load = [&](int k) {
      uint64_t v;
      std::memcpy(&v, at(k), 8);
      return hn::Set(half, v);
    };
    return hn::Combine(d, load(i + 1), load(i));
  };
  const hn::ScalableTag<uint64_t> d64;
#if HWY_TARGET == HWY_AVX3 || HWY_TARGET == HWY_AVX3_DL
  const hn::Half<decltype(d64)> h;
  return hn::BitCast(d8, hn::Combine(d64, hn::Combine(h, two(first + 12), two(first + 8)),
                                     hn::Combine(h, two(first + 4), two(first))));
#elif HWY_TARGET == HWY_AVX2
  return hn::BitCast(d8, hn::Combine(d64, two(first + 4), two(first)));
#else
  return hn::BitCast(d8, two(first));
#endif
}

/// Interleaves the channels of pairs of pixels, and subtracts 128.
HWY_INLINE VU8 channelPairs(VU8 pairs) {
  const U8 d;
  alignas(16) static constexpr uint8_t kInterleave[16] = {0, 4,  1, 5,  2,  6,  3,  7,
                                                          8, 12, 9, 13, 10, 14, 11, 15};
  return hn::Xor(hn::TableLookupBytes(pairs, hn::LoadDup128(d, kInterleave)), hn::Set(d, 0x80));
}

/// Weights of the left and right pixel as a pair of bytes, 255 - f and f, twice per sample.
HWY_INLINE hn::Vec<U32> weightsOf(hn::Vec<I32> x) {
  const U32 d;
  const auto fx = hn::BitCast(
      d, hn::MulFixedPoint15(hn::BitCast(I16(), hn::ShiftRight<1>(hn::BitCast(U16(), x))),
                             hn::BitCast(I16(), hn::Set(d, 0x000000FF))));
  const auto pair = hn::Xor(hn::Or(fx, hn::ShiftLeft<8>(fx)), hn::Set(d, 0x000000FF));
  return hn::Or(pair, hn::ShiftLeft<16>(pair));
}

/// The samples of a block, for any map. Positions must be inside the image.
inline void sampleScattered(const ConstPixelView& pixels, const Block& block, ptrdiff_t ahead,
                            int count, uint8_t* out) {
  const I32 d;
  const U8 d8;
  const U32 d32;
  const int n = int(hn::Lanes(d));
  alignas(64) uint8_t tail[kBlock * 4];
  const bool whole = count == kBlock;
  for (int t = 0; t < count; t += n) {
    const auto x = hn::Load(d, block.x + t), y = hn::Load(d, block.y + t);
    const auto at = [&](int i) {
      return pixels.data + ptrdiff_t(block.y[t + i] >> 16) * pixels.stride +
             ptrdiff_t(block.x[t + i] >> 16) * 4;
    };
    const auto below = [&](int i) { return at(i) + pixels.stride; };
    hwy::Prefetch(at(0) + ahead);
    const auto weights = weightsOf(x);
    const auto fy = hn::And(hn::ShiftRight<1>(hn::BitCast(d32, y)), hn::Set(d32, 0x7FFF));
    const auto fraction = hn::Or(fy, hn::ShiftLeft<16>(fy));
    const auto half = [&](int first, auto w, auto f) {
      const auto w8 = hn::BitCast(d8, w);
      return blendRows(mulPairs(w8, channelPairs(loadPairs(at, first))),
                       mulPairs(w8, channelPairs(loadPairs(below, first))), hn::BitCast(I16(), f));
    };
    const auto a = half(0, hn::InterleaveLower(d32, weights, weights),
                        hn::InterleaveLower(d32, fraction, fraction));
    const auto b = half(2, hn::InterleaveUpper(d32, weights, weights),
                        hn::InterleaveUpper(d32, fraction, fraction));
    hn::StoreU(pack(a, b), d8, whole ? out + t * 4 : tail + t * 4);
  }
  if (!whole) std::memcpy(out, tail, size_t(count) * 4);
}

#endif  // HWY_TARGET == HWY_SCALAR

}  // namespace kelvar::warp::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // toggled guard
