#pragma once

#include <cmath>
#include <cstdint>
#include <random>
#include <vector>

#include "geometry/warp/PixelView.h"

namespace kelvar::warp {

/// Pixels of a test. Rows are apart by a little more than they need, so that whoever writes
/// between them is found out.
struct Pixels {
  static constexpr int kGap = 12;

  Pixels(int width, int height, uint8_t fill = 0)
      : width(width),
        height(height),
        stride(width * 4 + kGap),
        bytes(size_t(stride) * height - kGap, fill) {}

  ConstPixelView view() const { return {bytes.data(), width, height, stride}; }
  PixelView view() { return {bytes.data(), width, height, stride}; }
  uint8_t* at(int x, int y) { return bytes.data() + size_t(y) * stride + size_t(x) * 4; }
  const uint8_t* at(int x, int y) const { return const_cast<Pixels*>(this)->at(x, y); }

  int width, height, stride;
  std::vector<uint8_t> bytes;
};

/// Noise, premultiplied.
inline Pixels noise(int width, int height) {
  Pixels pixels(width, height);
  std::mt19937 random(7);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      uint8_t* p = pixels.at(x, y);
      p[3] = uint8_t(random() % 4 ? 255 : random() % 256);
      for (int c = 0; c < 3; ++c) p[c] = uint8_t(random() % (p[3] + 1));
    }
  }
  return pixels;
}

template <typename Grey>
Pixels greyPicture(int width, int height, const Grey& grey) {
  Pixels pixels(width, height);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      uint8_t* p = pixels.at(x, y);
      p[0] = p[1] = p[2] = uint8_t(std::lround(grey(x, y)));
      p[3] = 255;
    }
  }
  return pixels;
}

/// Rings that grow finer outwards, up to the finest that pixels can hold.
inline Pixels zonePlate(int width, int height) {
  return greyPicture(width, height, [=](int x, int y) {
    const double dx = x - width / 2.0, dy = y - height / 2.0;
    return 127.5 + 127.5 * std::cos(M_PI * (dx * dx + dy * dy) / std::max(width, height));
  });
}

/// Lines of dark strokes one and two pixels wide on white, as small text has them.
inline Pixels smallText(int width, int height) {
  std::mt19937 random(3);
  std::vector<uint32_t> glyphs(size_t(width) * height);
  for (uint32_t& glyph : glyphs) glyph = uint32_t(random());
  return greyPicture(width, height, [&](int x, int y) {
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
  return greyPicture(width, height, [&](int x, int y) {
    return std::min(255.0, std::max(0.0, sum[size_t(y) * width + x]));
  });
}

}  // namespace kelvar::warp
