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

/// to[i] += from[i + shift] * weight, where both exist.
void add(const float* from, float* to, int count, int shift, float weight) {
  const int first = std::max(0, -shift), last = std::min(count, count - shift);
  for (int i = first; i < last; ++i) to[i] += from[i + shift] * weight;
}

void convolve(QImage* pixels, const std::vector<float>& weights) {
  const int channels = pixels->depth() / 8, height = pixels->height();
  const int stride = pixels->width() * channels, reach = int(weights.size()) / 2;
  std::vector<float> across(size_t(stride) * height), line(stride);
  for (int y = 0; y < height; ++y) {
    const uchar* from = pixels->constScanLine(y);
    std::copy(from, from + stride, line.begin());
    float* to = across.data() + size_t(y) * stride;
    for (int i = -reach; i <= reach; ++i) add(line.data(), to, stride, i * channels, weights[i + reach]);
  }
  for (int y = 0; y < height; ++y) {
    std::fill(line.begin(), line.end(), 0.5f);  // Rounds when it is cut off below.
    for (int i = std::max(-reach, -y); i <= std::min(reach, height - 1 - y); ++i) {
      add(across.data() + size_t(y + i) * stride, line.data(), stride, 0, weights[i + reach]);
    }
    uchar* to = pixels->scanLine(y);
    for (int x = 0; x < stride; ++x) to[x] = uchar(std::min(255.f, line[x]));
  }
}

}  // namespace

int blurReach(double deviation) { return int(std::ceil(3 * deviation)); }

void blur(QImage* pixels, double deviation) {
  if (!(deviation > 0.05) || pixels->isNull()) return;
  if (deviation <= kLargestExactDeviation) return convolve(pixels, bell(deviation));
  const QSize size = pixels->size();
  const QImage::Format format = pixels->format();
  QImage half = pixels->scaled((size.width() + 1) / 2, (size.height() + 1) / 2,
                               Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  half.convertTo(format);
  blur(&half, deviation / 2);
  *pixels = half.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  pixels->convertTo(format);
}

}  // namespace kelvar::render
