#include "pixels/warp/AreaFilter.h"

#include <gtest/gtest.h>

#include "pixels/warp/ByteKernel.h"
#include "pixels/warp/Pixels.h"
#include "pixels/warp/ReferenceWarp.h"
#include "pixels/warp/Warp.h"

namespace kelvar::warp {
namespace {

Pixels best(const Pixels& source, int width, int height, const Quad& quad, int oversampling = 1) {
  Pixels output(width, height);
  EXPECT_TRUE(warp(source.view(), output.view(), quad, {Sampling::Best, oversampling, 2}));
  return output;
}

/// Against the mean over 16 by 16 exact samples a pixel, in decibels.
double psnr(const Pixels& source, const Pixels& output, const Quad& quad) {
  const ReferenceWarp reference(source.view(), quad);
  double error = 0;
  for (int y = 0; y < output.height; ++y) {
    for (int x = 0; x < output.width; ++x) {
      const ReferenceWarp::Color mean = reference.mean(x, y, 16);
      for (int c = 0; c < 4; ++c) error += std::pow(output.at(x, y)[c] - mean[c], 2);
    }
  }
  return 10 * std::log10(255 * 255 / (error / (4.0 * output.width * output.height)));
}

TEST(AreaFilterTest, AveragesOverPixelWhereMapShrinks) {
  const struct {
    const char* name;
    Pixels pixels;
  } images[] = {{"zone plate", zonePlate(400, 300)},
                {"small text", smallText(400, 300)},
                {"photograph", photograph(400, 300)}};
  struct Map {
    std::string name;
    int width, height;
    Quad quad;
  };
  std::vector<Map> maps;
  for (const double factor : {2.0, 2.4, 3.0, 4.0, 5.5, 8.0}) {
    const double w = 400 / factor, h = 300 / factor, m = w * 0.03;
    maps.push_back(
        {"shrunk by " + std::to_string(factor),
         int(w + m) + 2,
         int(h + m) + 2,
         {{{m * 0.3, m * 0.5}, {w + m * 0.2, m * 0.1}, {w + m * 0.1, h + m * 0.2}, {m * 0.2, h}}}});
  }
  maps.push_back({"turned", 122, 112, {{{39, 0}, {121, 43}, {84, 110}, {2, 65}}}});
  maps.push_back({"flattened", 180, 42, {{{2, 2}, {176, 8}, {166, 39}, {4, 35}}}});
  maps.push_back({"strong perspective", 125, 80, {{{39, 2}, {82, 0}, {121, 78}, {1, 74}}}});
  for (const Map& map : maps) {
    for (const auto& image : images) {
      const Pixels output = best(image.pixels, map.width, map.height, map.quad);
      EXPECT_GE(psnr(image.pixels, output, map.quad), 38) << image.name << " " << map.name;
    }
  }
}

TEST(AreaFilterTest, IsBilinearInsideWhereMapDoesNotShrink) {
  const Pixels source = noise(200, 150);
  const Quad quads[] = {
      {{{3.3, 5.1}, {410.7, 12.2}, {399.2, 311.9}, {8.4, 300.3}}},
      {{{30.5, 4.2}, {229.1, 40.8}, {205.9, 191.4}, {2.6, 154.5}}},
      {{{300.2, 3}, {298, 402.5}, {4, 399.5}, {1.5, 7.5}}},
  };
  for (const Quad& quad : quads) {
    Pixels plain(420, 410);
    ASSERT_TRUE(warp(source.view(), plain.view(), quad));
    const Pixels output = best(source, 420, 410, quad);
    const ReferenceWarp reference(source.view(), quad);
    int differing = 0, edge = 0;
    double worst = 0;
    for (int y = 0; y < 410; ++y) {
      for (int x = 0; x < 420; ++x) {
        const double depth = reference.depth({x + 0.5, y + 0.5});
        const uint8_t* got = output.at(x, y);
        if (depth > 0.75) differing += !std::equal(got, got + 4, plain.at(x, y));
        if (std::abs(depth) > 0.75) continue;
        double covered = 0;
        for (int k = 0; k < 1024; ++k) {
          covered += reference.depth({x + (k % 32 + 0.5) / 32, y + (k / 32 + 0.5) / 32}) >= 0;
        }
        // The alpha of what is there, times coverage.
        const double alpha = reference.sample({x + 0.5, y + 0.5})[3] * covered / 1024;
        worst = std::max(worst, std::abs(alpha - got[3]));
        ++edge;
      }
    }
    EXPECT_EQ(differing, 0);
    EXPECT_GT(edge, 800);
    EXPECT_LE(worst, 4);
  }
}

/// The pattern of samples changes at some shrink factors; what it yields must hardly change.
TEST(AreaFilterTest, TransitionsWithoutSeam) {
  const Pixels source = photograph(600, 450);
  for (int hundredths = 100; hundredths < 450; hundredths += 5) {
    const double before = hundredths / 100.0, after = before + 1e-4;
    const auto run = [&](double factor) {
      const double w = 600 / factor, h = 450 / factor;
      return best(source, 100, 100, {{{0, 0}, {w, 0}, {w, h}, {0, h}}});
    };
    const Pixels a = run(before), b = run(after);
    double square = 0;
    for (int y = 0; y < 100; ++y) {
      for (int x = 0; x < 100; ++x) square += std::pow(a.at(x, y)[0] - b.at(x, y)[0], 2);
    }
    EXPECT_LE(std::sqrt(square / 10000), 1.2) << "at a shrink factor of " << before;
  }
}

/// Sides as long as they may be, shrunk to ends between pixels: the last pixels take their color
/// from the end that they lie at.
TEST(AreaFilterTest, ReachesEndsOfLongestSides) {
  for (const bool tall : {false, true}) {
    Pixels source(tall ? 16 : kMaxSide, tall ? kMaxSide : 16);
    for (int y = 0; y < source.height; ++y) {
      for (int x = 0; x < source.width; ++x) {
        const uint8_t gray = (tall ? y : x) < kMaxSide / 2 ? 0 : 255;
        std::fill_n(source.at(x, y), 3, gray);
        source.at(x, y)[3] = 255;
      }
    }
    const double l = 1638.3, s = 8.3;
    const Quad quad{{{0, 0}, {tall ? s : l, 0}, {tall ? s : l, tall ? l : s}, {0, tall ? l : s}}};
    const Pixels output = best(source, tall ? 9 : 1639, tall ? 1639 : 9, quad);
    const uint8_t* last = tall ? output.at(4, 1638) : output.at(1638, 4);
    EXPECT_EQ(int(last[0]), int(last[3])) << "white, as far as it is covered";
    EXPECT_NEAR(last[3], 0.3 * 255, 2);
    const uint8_t* first = tall ? output.at(4, 0) : output.at(0, 4);
    EXPECT_EQ(int(first[0]), 0);
  }
}

TEST(AreaFilterTest, AveragesMoreSamplesOnRequest) {
  const Pixels source = noise(60, 40);
  const Quad quad{{{4.2, 3.1}, {75.5, 6.4}, {70.1, 58.3}, {2.2, 50.9}}};
  const Pixels output = best(source, 80, 60, quad, 8);
  EXPECT_GE(psnr(source, output, quad), 45);
}

/// With this many samples per pixel requested, the grid is the same at every shrink factor here.
TEST(AreaFilterTest, MatchesReferenceMeanInEveryFormat) {
  const int kSamples = 6;
  const Quad quad{{{2, 3}, {50, 1}, {46.5, 38}, {4, 35}}};
  for (const PixelFormat& format : allFormats()) {
    const Pixels source = noise(140, 110, format);
    Pixels output(52, 40, format);
    ASSERT_TRUE(warp(source.view(), output.view(), quad, {Sampling::Best, kSamples, 1}));
    const ReferenceWarp reference(source.view(), quad);
    const bool isFloat = format.component == ComponentType::Float32;
    const bool isInBytes = ByteKernel::takes(format);
    const double limit = isFloat ? std::ldexp(1.0, -20) : isInBytes ? 2 : 1;
    double worst = 0;
    for (int i = 0; i < 52 * 40; ++i) {
      const int x = i % 52, y = i / 52;
      if (reference.depth({x + 0.5, y + 0.5}) < 0.75) continue;
      const ReferenceWarp::Color mean = reference.mean(x, y, kSamples);
      for (int c = 0; c < format.channels; ++c) {
        const double exact = isFloat ? mean[c] : std::round(mean[c]);
        worst = std::max(worst, std::abs(exact - output.get(x, y, c)));
      }
    }
    EXPECT_LE(worst, limit) << nameOf(format);
  }
}

/// The image with each byte as a component of `format`.
Pixels converted(const Pixels& bytes, const PixelFormat& format) {
  Pixels result(bytes.width, bytes.height, format);
  for (int i = 0; i < bytes.width * bytes.height * 4; ++i) {
    const int c = i % 4, x = i / 4 % bytes.width, y = i / 4 / bytes.width;
    const double alpha = bytes.get(x, y, 3) / 255;
    const bool divides = format.alpha == AlphaKind::Straight && c < 3 && alpha > 0;
    result.set(x, y, c, bytes.get(x, y, c) / (divides ? alpha : 1) * maxOf(format) / 255);
  }
  return result;
}

/// The largest difference between the bytes and an image in another format, in bytes.
double largestDifference(const Pixels& bytes, const Pixels& other) {
  double largest = 0;
  for (int i = 0; i < bytes.width * bytes.height * 4; ++i) {
    const int c = i % 4, x = i / 4 % bytes.width, y = i / 4 / bytes.width;
    const double max = maxOf(other.format), alpha = other.get(x, y, 3) / max;
    const bool multiplies = other.format.alpha == AlphaKind::Straight && c < 3;
    const double value = other.get(x, y, c) * (multiplies ? alpha : 1) * 255 / max;
    largest = std::max(largest, std::abs(value - bytes.get(x, y, c)));
  }
  return largest;
}

/// Along the edge too, and through all patterns of samples.
TEST(AreaFilterTest, FiltersEveryFormatAlike) {
  const Pixels bytes = noise(200, 140);
  for (const double factor : {0.7, 1.4, 1.7, 2.5, 6.0}) {
    const double w = 200 / factor, h = 140 / factor;
    const int width = int(w) + 4, height = int(h) + 4;
    const Quad quad{{{1.3, 2.1}, {w + 2, 1.6}, {w + 0.8, h + 2.7}, {2.4, h + 1.1}}};
    const Pixels expected = best(bytes, width, height, quad);
    for (const auto component : {ComponentType::UInt16, ComponentType::Float32}) {
      for (const AlphaKind alpha : {AlphaKind::Straight, AlphaKind::Premultiplied}) {
        const PixelFormat format{4, component, alpha};
        Pixels output(width, height, format);
        ASSERT_TRUE(
            warp(converted(bytes, format).view(), output.view(), quad, {Sampling::Best, 1, 2}));
        EXPECT_LE(largestDifference(expected, output), 2)
            << nameOf(format) << " shrunk by " << factor;
      }
    }
  }
}

}  // namespace
}  // namespace kelvar::warp
