#include "pixels/codec/AlphaPremultiply.h"

#include <gtest/gtest.h>

#include <vector>

namespace kelvar {
namespace {

uint32_t gray(int alpha, int value) {
  return uint32_t(alpha) << 24 | uint32_t(value) << 16 | uint32_t(value) << 8 | uint32_t(value);
}

/// numerator / denominator, rounded to nearest.
int rounded(int numerator, int denominator) {
  return (2 * numerator + denominator) / (2 * denominator);
}

TEST(AlphaPremultiplyTest, RoundsEveryValueAtEveryAlpha) {
  for (int a = 0; a < 256; ++a) {
    for (int c = 0; c < 256; ++c) {
      const uint32_t product = gray(a, rounded(c * a, 255));
      ASSERT_EQ(premultiplied(gray(a, c)), product) << "value " << c << " alpha " << a;
      if (a == 0) continue;
      const int straight = std::min(rounded(c * 255, a), 255);
      ASSERT_EQ(unpremultiplied(gray(a, c)), gray(a, straight)) << "value " << c << " alpha " << a;
      if (c > a) continue;
      ASSERT_EQ(premultiplied(unpremultiplied(gray(a, c))), gray(a, c));
    }
  }
  EXPECT_EQ(unpremultiplied(0), 0u);
}

TEST(AlphaPremultiplyTest, RowsMatchSinglePixelsAtEveryWidth) {
  // Runs that are opaque, empty and mixed, so that a row's shortcuts are entered and left.
  for (int width = 1; width < 70; ++width) {
    std::vector<uint32_t> pixels;
    for (int x = 0; x < width; ++x) {
      const int kind = x / 17 % 3;
      pixels.push_back(kind == 0 ? 0xff102030u + uint32_t(x) : kind == 1 ? 0 : 0x80402010u);
    }
    std::vector<uint8_t> rgba(size_t(width) * 4);
    unpremultiplyRow(pixels.data(), rgba.data(), width);
    for (int x = 0; x < width; ++x) {
      const uint8_t* p = &rgba[size_t(x) * 4];
      ASSERT_EQ(uint32_t{p[3]} << 24 | uint32_t{p[0]} << 16 | uint32_t{p[1]} << 8 | p[2],
                unpremultiplied(pixels[size_t(x)]));
    }
    std::vector<uint32_t> back(pixels.size());
    premultiplyRow(rgba.data(), back.data(), width);
    ASSERT_EQ(back, pixels) << width;
  }
}

}  // namespace
}  // namespace kelvar
