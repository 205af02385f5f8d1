#include "pixels/filter/convolve.h"

#include <algorithm>
#include <cassert>
#include <type_traits>

namespace kelvar {
namespace {

/// to[i] += the sum of weights[j] * from[i + j * step], for as many taps at once as leave the sums
/// in registers.
template <int kTaps>
void addTaps(const float* __restrict from, ptrdiff_t step, const float* weights,
             float* __restrict to, int count) {
  for (int i = 0; i < count; ++i) {
    float sum = to[i];
    for (int j = 0; j < kTaps; ++j) sum += from[i + j * step] * weights[j];
    to[i] = sum;
  }
}

void addTaps(const float* from, ptrdiff_t step, const float* weights, int taps, float* to,
             int count) {
  constexpr int kAtOnce = 8;
  int j = 0;
  for (; j + kAtOnce <= taps; j += kAtOnce) {
    addTaps<kAtOnce>(from + j * step, step, weights + j, to, count);
  }
  for (; j < taps; ++j) addTaps<1>(from + j * step, step, weights + j, to, count);
}

template <typename T>
void convolveAs(const PixelView& pixels, const std::vector<float>& weights,
                const std::stop_token& stop) {
  constexpr bool kIsFloat = std::is_same_v<T, float>;
  const int channels = pixels.format.channels, height = pixels.height;
  const int stride = pixels.width * channels;
  const int taps = int(weights.size()), reach = taps / 2;
  std::vector<float> across(size_t(stride) * height);
  std::vector<float> line(stride + 2 * reach * channels);
  int top = height, bottom = -1;  // Of the rows that are not empty: often far fewer.
  for (int y = 0; y < height && !stop.stop_requested(); ++y) {
    const auto* const from = reinterpret_cast<const T*>(pixels.row(y));
    if (std::all_of(from, from + stride, [](T value) { return value == 0; })) continue;
    top = std::min(top, y);
    bottom = y;
    std::copy(from, from + stride, line.begin() + reach * channels);
    addTaps(line.data(), channels, weights.data(), taps, across.data() + size_t(y) * stride,
            stride);
  }
  for (int y = 0; y < height && !stop.stop_requested(); ++y) {
    const int first = std::max(top, y - reach), last = std::min(bottom, y + reach);
    // Rounds when the fraction is dropped below.
    std::fill(line.begin(), line.end(), kIsFloat ? 0.f : 0.5f);
    if (first <= last) {
      addTaps(across.data() + size_t(first) * stride, stride, weights.data() + first - y + reach,
              last - first + 1, line.data(), stride);
    }
    auto* const to = reinterpret_cast<T*>(pixels.row(y));
    for (int x = 0; x < stride; ++x) to[x] = T(kIsFloat ? line[x] : std::min(255.f, line[x]));
  }
}

}  // namespace

void convolve(const PixelView& pixels, const std::vector<float>& weights,
              const std::stop_token& stop) {
  assert(weights.size() % 2 == 1);
  if (pixels.format.component == ComponentType::Float32) {
    return convolveAs<float>(pixels, weights, stop);
  }
  assert(pixels.format.component == ComponentType::UInt8);
  convolveAs<uint8_t>(pixels, weights, stop);
}

}  // namespace kelvar
