#include "host/render/BlendMode.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace kelvar::render {
namespace {

using Rgb = std::array<float, 3>;

float luminosity(const Rgb& c) { return 0.3f * c[0] + 0.59f * c[1] + 0.11f * c[2]; }

float saturation(const Rgb& c) {
  const auto [least, most] = std::minmax_element(c.begin(), c.end());
  return *most - *least;
}

Rgb withLuminosity(Rgb c, float wanted) {
  const float shift = wanted - luminosity(c);
  for (float& part : c) part += shift;
  const float middle = luminosity(c);
  const auto [least, most] = std::minmax_element(c.begin(), c.end());
  const float low = *least, high = *most;
  for (float& part : c) {
    if (low < 0) part = middle + (part - middle) * middle / (middle - low);
    if (high > 1) part = middle + (part - middle) * (1 - middle) / (high - middle);
  }
  return c;
}

Rgb withSaturation(Rgb c, float wanted) {
  const float low = *std::min_element(c.begin(), c.end()), range = saturation(c);
  for (float& part : c) part = range > 0 ? (part - low) * wanted / range : 0;
  return c;
}

Rgb mixed(const Rgb& below, const Rgb& above, BlendMode mode) {
  switch (mode) {
    case BlendMode::Hue:
      return withLuminosity(withSaturation(above, saturation(below)), luminosity(below));
    case BlendMode::Saturation:
      return withLuminosity(withSaturation(below, saturation(above)), luminosity(below));
    case BlendMode::Color:
      return withLuminosity(above, luminosity(below));
    default:
      return withLuminosity(below, luminosity(above));
  }
}

struct Pixel {
  Rgb color{};  ///< Premultiplied.
  float alpha = 0;
};

Pixel unpacked(QRgb p) {
  return {{qRed(p) / 255.f, qGreen(p) / 255.f, qBlue(p) / 255.f}, qAlpha(p) / 255.f};
}

QRgb packed(const Pixel& p) {
  const auto part = [](float v) { return int(std::lround(std::clamp(v, 0.f, 1.f) * 255)); };
  return qRgba(part(p.color[0]), part(p.color[1]), part(p.color[2]), part(p.alpha));
}

Rgb straight(const Pixel& p) {
  Rgb color{};
  for (int i = 0; i < 3; ++i) color[i] = std::min(1.f, p.color[i] / p.alpha);
  return color;
}

Pixel mixed(const Pixel& below, const Pixel& above, BlendMode mode) {
  Pixel result;
  if (mode == BlendMode::PlusDarker) {
    // The sum of what both take away from white.
    result.alpha = std::min(1.f, below.alpha + above.alpha);
    for (int i = 0; i < 3; ++i) {
      const float taken = below.alpha - below.color[i] + above.alpha - above.color[i];
      result.color[i] = std::max(0.f, result.alpha - taken);
    }
    return result;
  }
  result.alpha = above.alpha + below.alpha * (1 - above.alpha);
  if (below.alpha <= 0) return above;
  const Rgb color = mixed(straight(below), straight(above), mode);
  for (int i = 0; i < 3; ++i) {
    result.color[i] = (1 - below.alpha) * above.color[i] + (1 - above.alpha) * below.color[i] +
                      below.alpha * above.alpha * color[i];
  }
  return result;
}

}  // namespace

BlendMode blendModeFrom(int number) {
  const bool isKnown = number > 0 && number <= int(BlendMode::PlusLighter);
  return isKnown ? BlendMode(number) : BlendMode::Normal;
}

std::optional<QPainter::CompositionMode> compositionOf(BlendMode mode) {
  switch (mode) {
    case BlendMode::Normal:
      return QPainter::CompositionMode_SourceOver;
    case BlendMode::Darken:
      return QPainter::CompositionMode_Darken;
    case BlendMode::Multiply:
      return QPainter::CompositionMode_Multiply;
    case BlendMode::ColorBurn:
      return QPainter::CompositionMode_ColorBurn;
    case BlendMode::Lighten:
      return QPainter::CompositionMode_Lighten;
    case BlendMode::Screen:
      return QPainter::CompositionMode_Screen;
    case BlendMode::ColorDodge:
      return QPainter::CompositionMode_ColorDodge;
    case BlendMode::Overlay:
      return QPainter::CompositionMode_Overlay;
    case BlendMode::SoftLight:
      return QPainter::CompositionMode_SoftLight;
    case BlendMode::HardLight:
      return QPainter::CompositionMode_HardLight;
    case BlendMode::Difference:
      return QPainter::CompositionMode_Difference;
    case BlendMode::Exclusion:
      return QPainter::CompositionMode_Exclusion;
    case BlendMode::PlusLighter:
      return QPainter::CompositionMode_Plus;
    default:
      return {};
  }
}

void mix(const QImage& above, QImage* below, BlendMode mode) {
  for (int y = 0; y < below->height(); ++y) {
    const auto* from = reinterpret_cast<const QRgb*>(above.constScanLine(y));
    auto* to = reinterpret_cast<QRgb*>(below->scanLine(y));
    for (int x = 0; x < below->width(); ++x) {
      if (qAlpha(from[x]) > 0) to[x] = packed(mixed(unpacked(to[x]), unpacked(from[x]), mode));
    }
  }
}

}  // namespace kelvar::render
