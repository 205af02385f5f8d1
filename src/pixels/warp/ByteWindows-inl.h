// Samples by windows. Included for the target that has byte permutes over whole 64-byte registers
// (AVX-512 VBMI). Highway 1.0.3 has no function for these permutes.
//
// Where neighboring samples are close together in the source, their pixels lie in short stretches
// of a few rows. These windows are loaded whole, and one permute picks the bytes of eight samples
// at once, which replaces a load for each sample and row.

#if defined(KELVAR_PIXELS_WARP_BYTE_WINDOWS_INL_H_) == defined(HWY_TARGET_TOGGLE)
#ifdef KELVAR_PIXELS_WARP_BYTE_WINDOWS_INL_H_
#undef KELVAR_PIXELS_WARP_BYTE_WINDOWS_INL_H_
#else
#define KELVAR_PIXELS_WARP_BYTE_WINDOWS_INL_H_
#endif

#include <algorithm>
#include <cstdlib>
#include <type_traits>

#include "pixels/warp/ByteSamples-inl.h"

#if HWY_TARGET == HWY_AVX3_DL

HWY_BEFORE_NAMESPACE();
namespace kelvar::warp::HWY_NAMESPACE {

/// Eight samples are split into `kParts` parts. Each has a window of 16 / kParts pixels in three
/// rows.
template <int kParts>
struct Windows {
  static constexpr int kPixels = 16 / kParts;  // in a window
  static constexpr int kSamples = 8 / kParts;  // in a part
  static constexpr int kBytes = 64 / kParts;

  /// Loads the windows of all parts side by side.
  HWY_INLINE static __m512i load(const uint8_t* const* at, ptrdiff_t offset = 0) {
    const auto* a = at[0] + offset;
    if constexpr (kParts == 1) {
      return _mm512_loadu_si512(a);
    } else if constexpr (kParts == 2) {
      const auto* b = at[1] + offset;
      return _mm512_inserti64x4(_mm512_castsi256_si512(_mm256_loadu_si256((const __m256i*)a)),
                                _mm256_loadu_si256((const __m256i*)b), 1);
    } else {
      __m512i v = _mm512_castsi128_si512(_mm_loadu_si128((const __m128i*)a));
      v = _mm512_inserti32x4(v, _mm_loadu_si128((const __m128i*)(at[1] + offset)), 1);
      v = _mm512_inserti32x4(v, _mm_loadu_si128((const __m128i*)(at[2] + offset)), 2);
      return _mm512_inserti32x4(v, _mm_loadu_si128((const __m128i*)(at[3] + offset)), 3);
    }
  }
};

struct WindowTables {
  // For a window that starts at a pixel whose number is r modulo 16: byte indices of the
  // interleaved channels of two pixels, less four times the number of the left one.
  alignas(64) uint8_t pattern[16][64];
  // Copies byte 0 (or bytes 0 and 1) of each of 8 dwords to 8 bytes; low and high half.
  alignas(64) uint8_t replicate[2][64];
  alignas(64) uint8_t replicate16[2][64];

  constexpr WindowTables() : pattern(), replicate(), replicate16() {
    constexpr int kOrder[8] = {0, 4, 1, 5, 2, 6, 3, 7};
    for (int r = 0; r < 16; ++r) {
      for (int i = 0; i < 64; ++i) pattern[r][i] = uint8_t((kOrder[i % 8] - 4 * r) & 63);
    }
    for (int half = 0; half < 2; ++half) {
      for (int i = 0; i < 64; ++i) {
        replicate[half][i] = uint8_t(4 * (8 * half + i / 8));
        replicate16[half][i] = uint8_t(4 * (8 * half + i / 8) + i % 2);
      }
    }
  }
};
inline constexpr WindowTables kTables;

/// The direction in which a row's samples move through the source, and the largest distance between
/// neighbors.
struct Course {
  bool left, up;
  int64_t stepX, stepY;  // 16.16
};

HWY_INLINE Course courseOf(const Positions& p, int count) {
  // The map is monotone along a row and so is its speed: the extremes are at the ends.
  const int last = count - 1, before = std::max(last - 1, 0);
  const auto step = [=](const int32_t* v) {
    const int64_t first = v[1], final = v[last];
    return std::max(std::abs(first - v[0]), std::abs(final - v[before])) + 64;
  };
  return {p.x[last] < p.x[0], p.y[last] < p.y[0], step(p.x), step(p.y)};
}

/// Eight samples from the windows at `at`, in three rows; `pick` selects the bytes.
template <int kParts>
HWY_INLINE VU16 sampleEight(const uint8_t* const* at, const uint8_t* const* third, ptrdiff_t stride,
                            __m512i pick, __mmask8 next, __m512i weights, __m512i fraction) {
  using W = Windows<kParts>;
  const __m512i bias = _mm512_set1_epi8(int8_t(0x80));
  const __m512i row0 = _mm512_permutexvar_epi8(pick, W::load(at));
  const __m512i row1 = _mm512_permutexvar_epi8(pick, W::load(at, stride));
  const __m512i row2 = _mm512_permutexvar_epi8(pick, W::load(third));
  const __m512i top = _mm512_xor_si512(_mm512_mask_mov_epi64(row0, next, row1), bias);
  const __m512i bottom = _mm512_xor_si512(_mm512_mask_mov_epi64(row1, next, row2), bias);
  return blendRows(mulPairs(VU8{weights}, VU8{top}), mulPairs(VU8{weights}, VU8{bottom}),
                   VI16{fraction});
}

/// The integer part of a 16.16 number in memory.
HWY_INLINE ptrdiff_t whole(const int32_t* p) {
  int16_t high;
  std::memcpy(&high, reinterpret_cast<const char*>(p) + 2, 2);
  return high;
}

/// Samples a block by windows of `kParts` parts. `kEdge`: windows may reach past the right or the
/// bottom edge and are kept inside.
template <int kParts, bool kEdge>
class WindowSampler {
 public:
  WindowSampler(const ConstPixelView& pixels, const Block& block, const Course& course,
                ptrdiff_t ahead)
      : block_(block),
        xs_(block.x + (course.left ? kLast : 0)),
        ys_(block.y + (course.up ? kLast : 0)),
        data_(pixels.data),
        stride_(pixels.stride),
        ahead_(ahead),
        lastWindow_(pixels.width - W::kPixels),
        lastRow_(pixels.height - 1),
        topmost_(course.up ? _mm512_or_si512(lanes(), _mm512_set1_epi32(kLast))
                           : _mm512_andnot_si512(_mm512_set1_epi32(kLast), lanes())) {}

  /// Samples t to t + 15 of the block.
  HWY_INLINE __m512i sixteen(int t) const {
    const __m512i x = _mm512_load_si512(block_.x + t), y = _mm512_load_si512(block_.y + t);
    // A sample's upper row is its part's topmost or the next one.
    const __m512i apart = _mm512_xor_si512(y, _mm512_permutexvar_epi32(topmost_, y));
    const Samples samples{_mm512_and_si512(_mm512_srli_epi32(x, 14), _mm512_set1_epi32(0xFC)),
                          _mm512_mulhrs_epi16(_mm512_srli_epi16(x, 1), _mm512_set1_epi32(0xFF)),
                          _mm512_srli_epi16(y, 1),
                          _mm512_test_epi32_mask(apart, _mm512_set1_epi32(int(0xFFFF0000)))};
    const VU16 first = eight<0>(t, samples);
    const VU16 second = eight<1>(t, samples);
    const __m512i order = _mm512_set_epi64(7, 5, 3, 1, 6, 4, 2, 0);
    return _mm512_permutexvar_epi64(order, pack(first, second).raw);
  }

 private:
  using W = Windows<kParts>;
  static constexpr int kLast = W::kSamples - 1;

  /// The inputs of sixteen samples: four times the left pixel's number, weights, and whether the
  /// upper row is the part's second one.
  struct Samples {
    __m512i index, fx, fy;
    __mmask16 next;
  };

  HWY_INLINE static __m512i lanes() {
    return _mm512_set_epi32(15, 14, 13, 12, 11, 10, 9, 8, 7, 6, 5, 4, 3, 2, 1, 0);
  }

  template <int kHalf>
  HWY_INLINE VU16 eight(int t, const Samples& samples) const {
    const uint8_t* at[kParts];
    const uint8_t* third[kParts];
    const uint8_t* patterns[kParts];
    for (int part = 0; part < kParts; ++part) {
      const int i = t + 8 * kHalf + part * W::kSamples;
      const ptrdiff_t row = whole(ys_ + i);
      ptrdiff_t start = whole(xs_ + i);
      if constexpr (kEdge) start = std::min(start, lastWindow_);
      at[part] = data_ + row * stride_ + start * 4;
      third[part] = at[part] + 2 * stride_;
      if constexpr (kEdge) third[part] -= row + 2 > lastRow_ ? stride_ : 0;
      patterns[part] = kTables.pattern[(start - part * W::kPixels) & 15];
    }
    for (const uint8_t* window : at) _mm_prefetch(window + ahead_, _MM_HINT_T0);
    const __m512i replicate = _mm512_load_si512(kTables.replicate[kHalf]);
    const __m512i pick =
        _mm512_add_epi8(_mm512_permutexvar_epi8(replicate, samples.index), W::load(patterns));
    const __m512i weights =
        _mm512_xor_si512(_mm512_permutexvar_epi8(replicate, samples.fx), _mm512_set1_epi16(0x00FF));
    const __m512i fraction =
        _mm512_permutexvar_epi8(_mm512_load_si512(kTables.replicate16[kHalf]), samples.fy);
    return sampleEight<kParts>(at, third, stride_, pick, __mmask8(samples.next >> (8 * kHalf)),
                               weights, fraction);
  }

  const Block& block_;
  // Each part's leftmost and topmost sample is its first or its last.
  const int32_t* const xs_;
  const int32_t* const ys_;
  const uint8_t* const data_;
  const ptrdiff_t stride_, ahead_, lastWindow_, lastRow_;
  // For each sample, the number of the topmost sample in its part.
  const __m512i topmost_;
};

template <int kParts, bool kEdge>
void sampleParts(const ConstPixelView& pixels, const Block& block, const Course& course,
                 ptrdiff_t ahead, int count, uint8_t* out) {
  const WindowSampler<kParts, kEdge> sampler(pixels, block, course, ahead);
  for (int t = 0; t < count; t += 16) {
    const __m512i samples = sampler.sixteen(t);
    if (HWY_LIKELY(t + 16 <= count)) {
      _mm512_storeu_si512(out + t * 4, samples);
    } else {
      _mm512_mask_storeu_epi32(out + t * 4, __mmask16((1u << (count - t)) - 1), samples);
    }
  }
}

/// Samples a block by windows. Returns false when the samples are too far apart for that.
HWY_INLINE bool sampleWindows(const ConstPixelView& pixels, const Block& block,
                              const Course& course, ptrdiff_t ahead, int count, uint8_t* out) {
  constexpr int64_t kOne = 1 << kPositionBits;
  if (pixels.width < 16 || course.stepX >= 2 * kOne || course.stepY >= kOne) return false;
  const int right = std::max(block.x[0], block.x[kBlock - 1]) >> kPositionBits;
  const int bottom = std::max(block.y[0], block.y[kBlock - 1]) >> kPositionBits;
  const bool edge = right + 16 > pixels.width || bottom + 3 > pixels.height;
  const auto sample = [&](auto parts) {
    constexpr int kParts = parts;
    edge ? sampleParts<kParts, true>(pixels, block, course, ahead, count, out)
         : sampleParts<kParts, false>(pixels, block, course, ahead, count, out);
  };
  if (7 * course.stepY < kOne) {
    sample(std::integral_constant<int, 1>());
  } else if (3 * course.stepY < kOne) {
    sample(std::integral_constant<int, 2>());
  } else {
    sample(std::integral_constant<int, 4>());
  }
  return true;
}

}  // namespace kelvar::warp::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#endif  // HWY_TARGET == HWY_AVX3_DL
#endif  // toggled guard
