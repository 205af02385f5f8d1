#include "host/render/GaussianBlur.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace kelvar::render {
namespace {

std::vector<float> bell(double deviation) {
  const int reach = blurReach(deviation);
  std::vector<float> weights;
  float sum = 0;
  for (int i = -reach; i <= reach; ++i) {
    weights.push_back(float(std::exp(-0.5 * i * i / (deviation * deviation))));
    sum += weights.back();
  }
  for (float& weight : weights) weight /= sum;
  return weights;
}

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

void convolve(QImage* pixels, const std::vector<float>& weights, const std::stop_token& stop) {
  const int channels = pixels->depth() / 8, height = pixels->height();
  const int stride = pixels->width() * channels;
  const int taps = int(weights.size()), reach = taps / 2;
  std::vector<float> across(size_t(stride) * height);
  // Outside of the picture is empty.
  std::vector<float> line(stride + 2 * reach * channels);
  int top = height, bottom = -1;  // Of the rows that are not empty: often far fewer.
  for (int y = 0; y < height && !stop.stop_requested(); ++y) {
    const uchar* from = pixels->constScanLine(y);
    if (std::all_of(from, from + stride, [](uchar value) { return value == 0; })) continue;
    top = std::min(top, y);
    bottom = y;
    std::copy(from, from + stride, line.begin() + reach * channels);
    addTaps(line.data(), channels, weights.data(), taps, across.data() + size_t(y) * stride,
            stride);
  }
  for (int y = 0; y < height && !stop.stop_requested(); ++y) {
    const int first = std::max(top, y - reach), last = std::min(bottom, y + reach);
    std::fill(line.begin(), line.end(), 0.5f);  // Rounds when it is cut off below.
    if (first <= last) {
      addTaps(across.data() + size_t(first) * stride, stride, weights.data() + first - y + reach,
              last - first + 1, line.data(), stride);
    }
    uchar* to = pixels->scanLine(y);
    for (int x = 0; x < stride; ++x) to[x] = uchar(std::min(255.f, line[x]));
  }
}

}  // namespace

int blurReach(double deviation) { return int(std::ceil(3 * deviation)); }

void blur(QImage* pixels, double deviation, const std::stop_token& stop) {
  if (!(deviation > 0.05) || pixels->isNull() || stop.stop_requested()) return;
  if (deviation <= kLargestExactDeviation) return convolve(pixels, bell(deviation), stop);
  const QSize size = pixels->size();
  const QImage::Format format = pixels->format();
  QImage half = pixels->scaled((size.width() + 1) / 2, (size.height() + 1) / 2,
                               Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  half.convertTo(format);
  blur(&half, deviation / 2, stop);
  *pixels = half.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  pixels->convertTo(format);
}

}  // namespace kelvar::render
