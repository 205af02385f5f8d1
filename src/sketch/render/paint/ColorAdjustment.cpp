#include "sketch/render/paint/ColorAdjustment.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace kelvar::render {
namespace {

/// A hue turn and a saturation as one matrix on linear combinations of the channels, after
/// "Filter Effects Module Level 1", sections 8.5 and 8.6 (W3C).
std::array<float, 9> colorMatrix(const ColorControls& controls) {
  constexpr float kLuma[] = {0.213f, 0.715f, 0.072f};
  constexpr float kSine[] = {-0.213f, -0.715f, 0.928f, 0.143f, 0.140f,
                             -0.283f, -0.787f, 0.715f, 0.072f};
  const float cosine = float(std::cos(controls.hue)), sine = float(std::sin(controls.hue));
  const float saturation = float(controls.saturation);
  std::array<float, 9> turn{}, matrix{};
  for (int i = 0; i < 9; ++i) {
    const float luma = kLuma[i % 3], unit = i % 4 == 0 ? 1 : 0;
    turn[i] = luma + cosine * (unit - luma) + sine * kSine[i];
  }
  for (int row = 0; row < 3; ++row) {
    for (int column = 0; column < 3; ++column) {
      float sum = 0;
      for (int k = 0; k < 3; ++k) {
        const float unit = row == k ? 1 : 0;
        sum += (kLuma[k] + saturation * (unit - kLuma[k])) * turn[k * 3 + column];
      }
      matrix[row * 3 + column] = sum;
    }
  }
  return matrix;
}

void tone(QImage* pixels, const ColorControls& controls) {
  const std::array<float, 9> matrix = colorMatrix(controls);
  const float contrast = float(controls.contrast), brightness = float(controls.brightness);
  for (int y = 0; y < pixels->height(); ++y) {
    auto* row = reinterpret_cast<QRgb*>(pixels->scanLine(y));
    for (int x = 0; x < pixels->width(); ++x) {
      const QRgb p = qUnpremultiply(row[x]);
      const float from[] = {qRed(p) / 255.f, qGreen(p) / 255.f, qBlue(p) / 255.f};
      int to[3];
      for (int i = 0; i < 3; ++i) {
        const float mixed =
            matrix[i * 3] * from[0] + matrix[i * 3 + 1] * from[1] + matrix[i * 3 + 2] * from[2];
        const float applyColorControls = (mixed - 0.5f) * contrast + 0.5f + brightness;
        to[i] = int(std::lround(std::clamp(applyColorControls, 0.f, 1.f) * 255));
      }
      row[x] = qPremultiply(qRgba(to[0], to[1], to[2], qAlpha(p)));
    }
  }
}

}  // namespace

QImage applyColorControls(QImage pixels, const QList<ColorControls>& tones) {
  for (const ColorControls& controls : tones) tone(&pixels, controls);
  return pixels;
}

}  // namespace kelvar::render
