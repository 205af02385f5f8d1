#include "pixels/filter/GaussianBlur.h"

#include <cassert>
#include <cmath>
#include <vector>

#include "pixels/PixelBuffer.h"
#include "pixels/filter/Resize.h"
#include "pixels/filter/convolve.h"

namespace kelvar {
namespace {

std::vector<float> gaussianKernel(double sigma) {
  const int reach = blurReach(sigma);
  std::vector<float> weights;
  float sum = 0;
  for (int i = -reach; i <= reach; ++i) {
    weights.push_back(float(std::exp(-0.5 * i * i / (sigma * sigma))));
    sum += weights.back();
  }
  for (float& weight : weights) weight /= sum;
  return weights;
}

}  // namespace

int blurReach(double sigma) { return int(std::ceil(3 * sigma)); }

void blur(const PixelView& pixels, double sigma, const std::stop_token& stop) {
  assert(pixels.format.alpha != AlphaKind::Straight);
  if (!(sigma > kMinBlurSigma) || !pixels.data || stop.stop_requested()) return;
  if (sigma <= kMaxExactBlurSigma || pixels.format.component == ComponentType::Float32) {
    return convolve(pixels, gaussianKernel(sigma), stop);
  }
  auto half = PixelBuffer::create((pixels.width + 1) / 2, (pixels.height + 1) / 2, pixels.format);
  if (!half) return;
  shrink(pixels, half->view());
  blur(half->view(), sigma / 2, stop);
  enlarge(half->view(), pixels);
}

}  // namespace kelvar
