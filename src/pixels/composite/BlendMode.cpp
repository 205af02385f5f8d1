#include "pixels/composite/BlendMode.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cmath>

namespace kelvar {
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

float hardLight(float below, float above) {
  return above <= 0.5f ? below * 2 * above : below + (2 * above - 1) - below * (2 * above - 1);
}

float softLight(float below, float above) {
  if (above <= 0.5f) return below - (1 - 2 * above) * below * (1 - below);
  const float curve = below <= 0.25f ? ((16 * below - 12) * below + 4) * below : std::sqrt(below);
  return below + (2 * above - 1) * (curve - below);
}

/// The modes that mix each channel on its own.
float mixed(float below, float above, BlendMode mode) {
  switch (mode) {
    case BlendMode::Darken:
      return std::min(below, above);
    case BlendMode::Multiply:
      return below * above;
    case BlendMode::ColorBurn:
      return below >= 1 ? 1 : above <= 0 ? 0 : 1 - std::min(1.f, (1 - below) / above);
    case BlendMode::Lighten:
      return std::max(below, above);
    case BlendMode::Screen:
      return below + above - below * above;
    case BlendMode::ColorDodge:
      return below <= 0 ? 0 : above >= 1 ? 1 : std::min(1.f, below / (1 - above));
    case BlendMode::Overlay:
      return hardLight(above, below);
    case BlendMode::SoftLight:
      return softLight(below, above);
    case BlendMode::HardLight:
      return hardLight(below, above);
    case BlendMode::Difference:
      return std::abs(below - above);
    case BlendMode::Exclusion:
      return below + above - 2 * below * above;
    default:
      return above;
  }
}

Rgb mixed(const Rgb& below, const Rgb& above, BlendMode mode) {
  switch (mode) {
    case BlendMode::Hue:
      return withLuminosity(withSaturation(above, saturation(below)), luminosity(below));
    case BlendMode::Saturation:
      return withLuminosity(withSaturation(below, saturation(above)), luminosity(below));
    case BlendMode::Color:
      return withLuminosity(above, luminosity(below));
    case BlendMode::Luminosity:
      return withLuminosity(below, luminosity(above));
    default:
      return {mixed(below[0], above[0], mode), mixed(below[1], above[1], mode),
              mixed(below[2], above[2], mode)};
  }
}

struct Pixel {
  Rgb color{};  ///< Premultiplied.
  float alpha = 0;
};

Pixel unpacked(const uint8_t* bgra) {
  return {{bgra[2] / 255.f, bgra[1] / 255.f, bgra[0] / 255.f}, bgra[3] / 255.f};
}

void pack(const Pixel& pixel, uint8_t* bgra) {
  const auto part = [](float v) { return uint8_t(std::lround(std::clamp(v, 0.f, 1.f) * 255)); };
  for (int i = 0; i < 3; ++i) bgra[i] = part(pixel.color[2 - i]);
  bgra[3] = part(pixel.alpha);
}

Rgb straight(const Pixel& p) {
  Rgb color{};
  for (int i = 0; i < 3; ++i) color[i] = std::min(1.f, p.color[i] / p.alpha);
  return color;
}

Pixel added(const Pixel& below, const Pixel& above, BlendMode mode) {
  Pixel result;
  result.alpha = std::min(1.f, below.alpha + above.alpha);
  for (int i = 0; i < 3; ++i) {
    const float taken = below.alpha - below.color[i] + above.alpha - above.color[i];
    result.color[i] = mode == BlendMode::PlusDarker
                          ? std::max(0.f, result.alpha - taken)
                          : std::min(result.alpha, below.color[i] + above.color[i]);
  }
  return result;
}

Pixel mixed(const Pixel& below, const Pixel& above, BlendMode mode) {
  if (mode == BlendMode::PlusDarker || mode == BlendMode::PlusLighter) {
    return added(below, above, mode);
  }
  if (below.alpha <= 0) return above;
  Pixel result;
  result.alpha = above.alpha + below.alpha * (1 - above.alpha);
  const Rgb color = mixed(straight(below), straight(above), mode);
  for (int i = 0; i < 3; ++i) {
    result.color[i] = (1 - below.alpha) * above.color[i] + (1 - above.alpha) * below.color[i] +
                      below.alpha * above.alpha * color[i];
  }
  return result;
}

}  // namespace

void blend(const ConstPixelView& above, const PixelView& below, BlendMode mode) {
  assert(above.width == below.width && above.height == below.height);
  assert(above.format == PixelFormat{} && below.format == PixelFormat{});
  for (int y = 0; y < below.height; ++y) {
    const uint8_t* from = above.row(y);
    uint8_t* to = below.row(y);
    for (int x = 0; x < below.width; ++x, from += 4, to += 4) {
      if (from[3] > 0) pack(mixed(unpacked(to), unpacked(from), mode), to);
    }
  }
}

}  // namespace kelvar
