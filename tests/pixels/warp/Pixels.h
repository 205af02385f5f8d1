#pragma once

#include <cmath>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "pixels/PixelView.h"

namespace kelvar::warp {

inline std::vector<PixelFormat> allFormats() {
  std::vector<PixelFormat> formats;
  for (const auto component :
       {ComponentType::UInt8, ComponentType::UInt16, ComponentType::Float32}) {
    for (const int channels : {1, 3, 4}) formats.push_back({channels, component, AlphaKind::None});
    formats.push_back({4, component, AlphaKind::Straight});
    formats.push_back({4, component, AlphaKind::Premultiplied});
  }
  return formats;
}

inline std::string nameOf(const PixelFormat& format) {
  const char* const alphas[] = {"no", "straight", "premultiplied"};
  return std::to_string(format.channels) + " channels of " +
         std::to_string(8 * format.bytesPerComponent()) + " bits, " + alphas[int(format.alpha)] +
         " alpha";
}

/// What stands for 1 in a component.
inline double maxOf(const PixelFormat& format) {
  return format.component == ComponentType::UInt8    ? 255
         : format.component == ComponentType::UInt16 ? 65535
                                                     : 1;
}

inline double componentAt(const ConstPixelView& view, int x, int y, int c) {
  const uint8_t* at = view.row(y) + size_t(x) * view.format.bytesPerPixel();
  switch (view.format.component) {
    case ComponentType::UInt8:
      return at[c];
    case ComponentType::UInt16:
      return reinterpret_cast<const uint16_t*>(at)[c];
    case ComponentType::Float32:
      return reinterpret_cast<const float*>(at)[c];
  }
  return 0;
}

/// Pixels of a test. There is a gap between rows, which must not be written to.
struct Pixels {
  static constexpr int kGap = 12;

  Pixels(int width, int height, uint8_t fill = 0) : Pixels(width, height, PixelFormat(), fill) {}
  Pixels(int width, int height, const PixelFormat& format, uint8_t fill = 0)
      : width(width),
        height(height),
        format(format),
        stride(width * int(format.bytesPerPixel()) + kGap),
        bytes(size_t(stride) * height - kGap, fill) {}

  ConstPixelView view() const { return {bytes.data(), width, height, stride, format}; }
  PixelView view() { return {bytes.data(), width, height, stride, format}; }
  uint8_t* at(int x, int y) {
    return bytes.data() + size_t(y) * stride + size_t(x) * format.bytesPerPixel();
  }
  const uint8_t* at(int x, int y) const { return const_cast<Pixels*>(this)->at(x, y); }

  double get(int x, int y, int c) const { return componentAt(view(), x, y, c); }
  /// `value` is rounded to the component's type.
  void set(int x, int y, int c, double value) {
    switch (format.component) {
      case ComponentType::UInt8:
        at(x, y)[c] = uint8_t(std::lround(value));
        break;
      case ComponentType::UInt16:
        reinterpret_cast<uint16_t*>(at(x, y))[c] = uint16_t(std::lround(value));
        break;
      case ComponentType::Float32:
        reinterpret_cast<float*>(at(x, y))[c] = float(value);
    }
  }

  int width, height;
  PixelFormat format;
  int stride;
  std::vector<uint8_t> bytes;
};

/// Noise. Three of four pixels are opaque, the others have any alpha, now and then zero. Floats
/// without alpha have either sign.
inline Pixels noise(int width, int height, const PixelFormat& format = {}) {
  Pixels pixels(width, height, format);
  std::mt19937 random(7);
  const auto upTo = [&random](int max) { return int(random() % unsigned(max + 1)); };
  // Float alphas are multiples of 1 / 4095.
  const bool isFloat = format.component == ComponentType::Float32;
  const int max = isFloat ? 4095 : int(maxOf(format));
  const double unit = maxOf(format) / max;
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const int kind = upTo(15);
      const int alpha = kind >= 4 ? max : kind > 0 ? upTo(max) : 0;
      const bool premultiplied = format.alpha == AlphaKind::Premultiplied;
      for (int c = 0; c < format.channels; ++c) {
        const double sign = isFloat && format.alpha == AlphaKind::None && upTo(1) ? -1 : 1;
        pixels.set(x, y, c, sign * upTo(premultiplied ? alpha : max) * unit);
      }
      if (format.alpha != AlphaKind::None) pixels.set(x, y, 3, alpha * unit);
    }
  }
  return pixels;
}

template <typename Gray>
Pixels grayImage(int width, int height, const Gray& gray) {
  Pixels pixels(width, height);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      uint8_t* p = pixels.at(x, y);
      p[0] = p[1] = p[2] = uint8_t(std::lround(gray(x, y)));
      p[3] = 255;
    }
  }
  return pixels;
}

/// Rings that grow finer outwards, up to the finest that pixels can hold.
inline Pixels zonePlate(int width, int height) {
  return grayImage(width, height, [=](int x, int y) {
    const double dx = x - width / 2.0, dy = y - height / 2.0;
    return 127.5 + 127.5 * std::cos(M_PI * (dx * dx + dy * dy) / std::max(width, height));
  });
}

/// Lines of dark strokes one and two pixels wide on white, as small text has them.
inline Pixels smallText(int width, int height) {
  std::mt19937 random(3);
  std::vector<uint32_t> glyphs(size_t(width) * height);
  for (uint32_t& glyph : glyphs) glyph = uint32_t(random());
  return grayImage(width, height, [&](int x, int y) {
    const int line = y / 14, row = y % 14, column = x % 7;
    const uint32_t glyph = glyphs[size_t(line) * width + size_t(x / 7)];
    if (row > 9 || column > 4 || glyph % 6 == 0) return 255.0;
    const bool stem = column == int(glyph >> 4) % 5 || column == int(glyph >> 8) % 5;
    const bool bar = row == int(glyph >> 12) % 10 || row == int(glyph >> 16) % 10;
    return stem || bar ? 20.0 : 255.0;
  });
}

/// Noise of all sizes, the coarse stronger than the fine, as photographs have it.
inline Pixels photograph(int width, int height) {
  std::mt19937 random(5);
  std::normal_distribution<double> normal;
  std::vector<double> sum(size_t(width) * height, 128);
  double amplitude = 40;
  for (int grain = 64; grain >= 1; grain /= 2, amplitude *= 0.72) {
    const int columns = width / grain + 2;
    std::vector<double> grid(size_t(columns) * (height / grain + 2));
    for (double& value : grid) value = normal(random) * amplitude;
    for (int y = 0; y < height; ++y) {
      for (int x = 0; x < width; ++x) {
        const double u = double(x % grain) / grain, v = double(y % grain) / grain;
        const double* g = &grid[size_t(y / grain) * columns + x / grain];
        sum[size_t(y) * width + x] +=
            (g[0] * (1 - u) + g[1] * u) * (1 - v) + (g[columns] * (1 - u) + g[columns + 1] * u) * v;
      }
    }
  }
  return grayImage(width, height, [&](int x, int y) {
    return std::min(255.0, std::max(0.0, sum[size_t(y) * width + x]));
  });
}

}  // namespace kelvar::warp
