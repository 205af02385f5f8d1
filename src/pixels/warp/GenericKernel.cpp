#include "pixels/warp/GenericKernel.h"

#include <algorithm>
#include <cassert>
#include <type_traits>

#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "pixels/warp/GenericKernel.cpp"
#include <hwy/foreach_target.h>
#include <hwy/highway.h>

HWY_BEFORE_NAMESPACE();
namespace kelvar::warp::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

using F64 = hn::ScalableTag<double>;

/// One coordinate of a row's samples: the pixel at or before each, never the last one of the side,
/// and the distance from there, 0 to 1.
struct Coordinates {
  alignas(64) int32_t pixel[kChunk];
  alignas(64) double fraction[kChunk];
};

/// Computes the coordinates (n0 + i n1) / (w0 + i w1), clamped to a side of `pixels` pixels.
void locate(const MappedRow& row, double n0, double n1, int count, int pixels, Coordinates* out) {
  const F64 d;
  const hn::Rebind<int32_t, F64> di;
  const auto set = [d](double v) { return hn::Set(d, v); };
  const auto zero = hn::Zero(d), last = set(pixels - 1), lastPair = set(pixels - 2);
  for (int i = 0; i < count; i += int(hn::Lanes(d))) {
    const auto t = hn::Iota(d, i);
    const auto u = hn::Div(hn::Add(set(n0), hn::Mul(set(n1), t)),
                           hn::Add(set(row.w0), hn::Mul(set(row.w1), t)));
    // NaN becomes 0. Min and Max would treat it differently on each target.
    const auto fromZero = hn::IfThenElse(hn::Gt(u, zero), u, zero);
    const auto inside = hn::Min(fromZero, last);
    const auto pixel = hn::Min(hn::Floor(inside), lastPair);
    hn::Store(hn::DemoteTo(di, pixel), di, out->pixel + i);
    hn::Store(hn::Sub(inside, pixel), d, out->fraction + i);
  }
}

template <typename T, int kCount, bool kIsStraight = false>
struct Layout {
  using Component = T;
  static constexpr int kChannels = kCount;
  static constexpr bool kStraight = kIsStraight;
};

template <typename T, typename Use>
HWY_INLINE void useLayoutOf(const PixelFormat& format, const Use& use) {
  if (format.channels == 1) return use(Layout<T, 1>());
  if (format.channels == 3) return use(Layout<T, 3>());
  if (format.alpha == AlphaKind::Straight) return use(Layout<T, 4, true>());
  use(Layout<T, 4>());
}

/// Calls `use` with the Layout of the format.
template <typename Use>
HWY_INLINE void useLayout(const PixelFormat& format, const Use& use) {
  switch (format.component) {
    case ComponentType::UInt8:
      return useLayoutOf<uint8_t>(format, use);
    case ComponentType::UInt16:
      return useLayoutOf<uint16_t>(format, use);
    case ComponentType::Float32:
      return useLayoutOf<float>(format, use);
  }
}

/// Vectors of four doubles, or of fewer on some targets.
using Four = hn::CappedTag<double, 4>;

template <typename T>
HWY_INLINE hn::Vec<Four> load(const T* components) {
  const auto values = hn::LoadU(hn::Rebind<T, Four>(), components);
  if constexpr (std::is_same_v<T, float>) {
    return hn::PromoteTo(Four(), values);
  } else {
    return hn::PromoteTo(Four(), hn::PromoteTo(hn::Rebind<int32_t, Four>(), values));
  }
}

/// Four components of the weighted mean of four pixels.
template <typename T>
HWY_INLINE void blendFour(const T* a, const T* b, const T* c, const T* d, const double* weights,
                          double* out) {
  const Four tag;
  const auto weighted = [&](const T* p, int i) {
    return hn::Mul(load(p), hn::Set(tag, weights[i]));
  };
  for (int i = 0; i < 4; i += int(hn::Lanes(tag))) {
    const auto top = hn::Add(weighted(a + i, 0), weighted(b + i, 1));
    const auto bottom = hn::Add(weighted(c + i, 2), weighted(d + i, 3));
    hn::Store(hn::Add(top, bottom), tag, out + i);
  }
}

/// A sample, or the total of several.
struct Sample {
  /// Straight colors are multiplied by alpha.
  alignas(32) double channels[4];
  /// Of a straight format; channels[3] is not used.
  double alpha;
};

/// Calls `use(i, sample)` for each sample of the row.
template <typename L, typename Use>
HWY_INLINE void eachSample(const Source& source, const SampleRow& row, const Use& use) {
  using T = typename L::Component;
  constexpr int kChannels = L::kChannels;
  const ConstPixelView& pixels = source.pixels;
  assert(pixels.width >= 2 && pixels.height >= 2 && row.count >= 1 && row.count <= kChunk);
  const MappedRow mapped(source.map, row);
  Coordinates x, y;
  locate(mapped, mapped.xn0, mapped.xn1, row.count, pixels.width, &x);
  locate(mapped, mapped.yn0, mapped.yn1, row.count, pixels.height, &y);
  for (int i = 0; i < row.count; ++i) {
    const uint8_t* const at = pixels.row(y.pixel[i]);
    const T* const top = reinterpret_cast<const T*>(at) + ptrdiff_t(x.pixel[i]) * kChannels;
    const T* const bottom =
        reinterpret_cast<const T*>(at + pixels.stride) + ptrdiff_t(x.pixel[i]) * kChannels;
    const double right = x.fraction[i], left = 1 - right;
    const double lower = y.fraction[i], upper = 1 - lower;
    double weights[4] = {left * upper, right * upper, left * lower, right * lower};
    if constexpr (L::kStraight) {
      weights[0] *= top[3];
      weights[1] *= top[7];
      weights[2] *= bottom[3];
      weights[3] *= bottom[7];
    }
    Sample sample;
    // Four components of three channels reach into the next pixel.
    if (kChannels == 4 || (kChannels == 3 && x.pixel[i] < pixels.width - 2)) {
      blendFour(top, top + kChannels, bottom, bottom + kChannels, weights, sample.channels);
    } else {
      for (int c = 0; c < kChannels; ++c) {
        sample.channels[c] = (top[c] * weights[0] + top[kChannels + c] * weights[1]) +
                             (bottom[c] * weights[2] + bottom[kChannels + c] * weights[3]);
      }
    }
    sample.alpha = (weights[0] + weights[1]) + (weights[2] + weights[3]);
    use(i, sample);
  }
}

/// To the nearest value of the component's type; halves up.
template <typename T>
HWY_INLINE T rounded(double value) {
  if constexpr (std::is_same_v<T, float>) return T(value);
  return T(int(value + 0.5));
}

/// Writes four components: the values times `factor`.
template <typename T>
HWY_INLINE void writeFour(const double* values, double factor, T* out) {
  const Four d;
  const hn::Rebind<T, Four> dt;
  for (int i = 0; i < 4; i += int(hn::Lanes(d))) {
    const auto value = hn::Mul(hn::Load(d, values + i), hn::Set(d, factor));
    if constexpr (std::is_same_v<T, float>) {
      hn::StoreU(hn::DemoteTo(dt, value), dt, out + i);
    } else {
      const auto integer =
          hn::DemoteTo(hn::Rebind<int32_t, Four>(), hn::Add(value, hn::Set(d, 0.5)));
      hn::StoreU(hn::DemoteTo(dt, integer), dt, out + i);
    }
  }
}

/// Writes one pixel: the total of samples, each of which counts for `share`.
template <typename L>
HWY_INLINE void writeMean(const Sample& total, double share, typename L::Component* out) {
  using T = typename L::Component;
  if constexpr (L::kStraight) {
    writeFour(total.channels, total.alpha > 0 ? 1 / total.alpha : 0, out);
    out[3] = rounded<T>(total.alpha * share);
  } else if constexpr (L::kChannels == 4) {
    writeFour(total.channels, share, out);
  } else {
    for (int c = 0; c < L::kChannels; ++c) out[c] = rounded<T>(total.channels[c] * share);
  }
}

void SampleGenericRow(const Source& source, const SampleRow& row, uint8_t* out) {
  useLayout(source.pixels.format, [&](auto layout) {
    using L = decltype(layout);
    auto* const to = reinterpret_cast<typename L::Component*>(out);
    eachSample<L>(source, row, [to](int i, const Sample& sample) {
      writeMean<L>(sample, 1, to + ptrdiff_t(i) * L::kChannels);
    });
  });
}

void AddGenericRow(const Source& source, const SampleRow& row, double* sums) {
  useLayout(source.pixels.format, [&](auto layout) {
    using L = decltype(layout);
    eachSample<L>(source, row, [sums](int i, const Sample& sample) {
      double* const sum = sums + ptrdiff_t(i) * L::kChannels;
      for (int c = 0; c < (L::kStraight ? 3 : L::kChannels); ++c) sum[c] += sample.channels[c];
      if (L::kStraight) sum[3] += sample.alpha;
    });
  });
}

void MeanOfGenericGroups(const PixelFormat& format, const double* sums, int count, int each,
                         int samples, uint8_t* out) {
  useLayout(format, [&](auto layout) {
    using L = decltype(layout);
    constexpr int kChannels = L::kChannels;
    auto* const to = reinterpret_cast<typename L::Component*>(out);
    for (int i = 0; i < count; ++i) {
      Sample total{};
      for (int k = 0; k < each; ++k, sums += kChannels) {
        for (int c = 0; c < kChannels; ++c) total.channels[c] += sums[c];
      }
      total.alpha = total.channels[3];
      writeMean<L>(total, 1.0 / samples, to + ptrdiff_t(i) * kChannels);
    }
  });
}

}  // namespace kelvar::warp::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace kelvar::warp {

HWY_EXPORT(SampleGenericRow);
HWY_EXPORT(AddGenericRow);
HWY_EXPORT(MeanOfGenericGroups);

void GenericKernel::sampleRow(const Source& source, const SampleRow& row, uint8_t* out) {
  HWY_DYNAMIC_DISPATCH(SampleGenericRow)(source, row, out);
}

void GenericKernel::addRow(const Source& source, const SampleRow& row, Sum* sums) {
  HWY_DYNAMIC_DISPATCH(AddGenericRow)(source, row, sums);
}

void GenericKernel::meanOfGroups(const PixelFormat& format, const Sum* sums, int count, int each,
                                 int samples, uint8_t* out) {
  HWY_DYNAMIC_DISPATCH(MeanOfGenericGroups)(format, sums, count, each, samples, out);
}

}  // namespace kelvar::warp
#endif
