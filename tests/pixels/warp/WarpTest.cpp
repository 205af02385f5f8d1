#include "pixels/warp/Warp.h"

#include <gtest/gtest.h>
#include <hwy/highway.h>
#include <hwy/targets.h>

#include <algorithm>
#include <limits>
#include <string>

#include "pixels/warp/Pixels.h"
#include "pixels/warp/ReferenceWarp.h"

namespace kelvar::warp {
namespace {

/// Runs with one instruction set alone.
class OneTarget {
 public:
  explicit OneTarget(int64_t target) { set(target); }
  ~OneTarget() { set(0); }

 private:
  static void set(int64_t targets) {
    hwy::SetSupportedTargetsForTest(targets);
    hwy::GetChosenTarget().Update(hwy::SupportedTargets());
  }
};

std::vector<int64_t> allTargets() {
  std::vector<int64_t> targets;
  for (int64_t left = hwy::SupportedTargets(); left != 0; left &= left - 1) {
    targets.push_back(left & -left);
  }
  return targets;
}

struct Case {
  const char* name;
  int sourceWidth, sourceHeight, width, height;
  Quad quad;
};

/// Every path of the byte kernel: windows of one, two and four parts, scattered samples, runs of
/// each length and none, edges on all sides, images too small for windows.
const Case kCases[] = {
    {"general", 320, 240, 320, 240, {{{13, 14}, {310, 5}, {297, 230}, {22, 218}}}},
    {"enlarged", 60, 40, 320, 240, {{{13, 14}, {310, 5}, {297, 230}, {22, 218}}}},
    {"shrunk", 1500, 900, 200, 150, {{{8, 9}, {194, 3}, {186, 144}, {14, 136}}}},
    {"shrunk by 1.5", 480, 360, 320, 240, {{{0, 3}, {320, 0}, {318, 240}, {2, 239}}}},
    {"turned by 5 degrees", 320, 240, 340, 270, {{{21, 0}, {340, 28}, {319, 267}, {0, 239}}}},
    {"turned by 15 degrees", 320, 240, 372, 316, {{{62, 0}, {371, 83}, {309, 315}, {0, 232}}}},
    {"turned by 45 degrees", 240, 240, 340, 340, {{{170, 0}, {340, 170}, {170, 340}, {0, 170}}}},
    {"a quarter turn", 320, 240, 240, 320, {{{240, 0}, {236, 320}, {0, 311}, {5, 9}}}},
    {"a half turn", 320, 240, 320, 240, {{{320, 240}, {0, 238}, {3, 0}, {318, 2}}}},
    {"mirrored", 320, 240, 320, 240, {{{320, 0}, {0, 10}, {0, 240}, {320, 240}}}},
    {"strong perspective", 250, 200, 320, 240, {{{0, 0}, {320, 50}, {320, 150}, {0, 240}}}},
    {"very strong perspective", 250, 200, 640, 480, {{{0, 0}, {640, 230}, {640, 236}, {0, 480}}}},
    {"strong downwards", 250, 200, 320, 480, {{{155, 0}, {165, 0}, {320, 480}, {0, 480}}}},
    {"larger than the output",
     320,
     240,
     200,
     150,
     {{{-70, -55}, {290, -20}, {280, 190}, {-60, 210}}}},
    {"beside the output", 50, 50, 64, 48, {{{100, 0}, {150, 0}, {150, 40}, {100, 40}}}},
    {"moved by part of a pixel",
     90,
     70,
     100,
     80,
     {{{0.5, 0.25}, {90.5, 0.25}, {90.5, 70.25}, {0.5, 70.25}}}},
    {"scaled by three", 40, 30, 120, 90, {{{0, 0}, {120, 0}, {120, 90}, {0, 90}}}},
    {"shrunk along the axes",
     500,
     400,
     190,
     150,
     {{{5.3, 4.7}, {180.2, 4.7}, {180.2, 141.9}, {5.3, 141.9}}}},
    {"enlarged beyond the output",
     200,
     90,
     700,
     200,
     {{{-250.4, -31.1}, {1400.7, -31.1}, {1400.7, 310.3}, {-250.4, 310.3}}}},
    {"a quarter turn by three", 40, 30, 90, 120, {{{90, 0}, {90, 120}, {0, 120}, {0, 0}}}},
    {"a half turn along the axes", 320, 240, 640, 240, {{{640, 240}, {0, 240}, {0, 0}, {640, 0}}}},
    {"17 by 5 pixels", 17, 5, 320, 240, {{{10, 0}, {320, 0}, {300, 240}, {0, 240}}}},
    {"8 by 2 pixels", 8, 2, 320, 240, {{{10, 0}, {320, 0}, {300, 240}, {0, 240}}}},
    {"one pixel", 1, 1, 64, 48, {{{10, 0}, {64, 0}, {60, 48}, {0, 48}}}},
    {"one column", 1, 90, 64, 48, {{{10, 0}, {64, 0}, {60, 48}, {0, 48}}}},
    {"thinner than a pixel", 300, 200, 64, 48, {{{0, 20.2}, {64, 20.3}, {64, 20.6}, {0, 20.5}}}},
};

/// Every path of the other formats.
const Case kFormatCases[] = {
    {"general", 60, 50, 90, 70, {{{3, 4}, {87, 1}, {82, 66}, {6, 61}}}},
    {"shrunk", 150, 130, 60, 50, {{{2, 3}, {58, 1}, {55, 48}, {4, 45}}}},
    {"shrunk by 1.5", 90, 75, 61, 52, {{{0, 1}, {60, 0}, {59, 50}, {1, 49}}}},
    {"along the axes", 60, 50, 90, 40, {{{5.3, 4.7}, {80.2, 4.7}, {80.2, 41.9}, {5.3, 41.9}}}},
    {"a quarter turn", 60, 50, 70, 60, {{{68, 0}, {66, 60}, {0, 57}, {2, 1}}}},
    {"very strong perspective", 50, 40, 128, 96, {{{0, 0}, {128, 46}, {128, 47.2}, {0, 96}}}},
    {"one pixel", 1, 1, 24, 18, {{{4, 0}, {24, 0}, {22, 18}, {0, 18}}}},
};

/// Calls `use` for each case with each format that it is meant for.
template <typename Use>
void eachCase(const Use& use) {
  for (const Case& c : kCases) use(c, PixelFormat());
  for (const PixelFormat& format : allFormats()) {
    for (const Case& c : kFormatCases) use(c, format);
  }
}

void expectContract(const Case& c, const Pixels& source, const Pixels& output) {
  const ReferenceWarp reference(source.view(), c.quad);
  const bool isFloat = source.format.component == ComponentType::Float32;
  double worst = 0;  // In units of what the contract allows.
  int dirty = 0;
  for (int y = 0; y < c.height; ++y) {
    for (int x = 0; x < c.width; ++x) {
      const Point center{x + 0.5, y + 0.5};
      const double depth = reference.depth(center);
      const uint8_t* got = output.at(x, y);
      if (depth < -1e-6) {
        dirty += std::any_of(got, got + source.format.bytesPerPixel(), [](int b) { return b; });
      }
      if (depth < 0.01) continue;
      const ReferenceWarp::Color exact = reference.sample(center);
      const double unit = isFloat ? std::ldexp(reference.magnitude(center), -20) : 1;
      for (int i = 0; i < source.format.channels; ++i) {
        const double error = (isFloat ? exact[i] : std::round(exact[i])) - output.get(x, y, i);
        if (error != 0) worst = std::max(worst, std::abs(error) / unit);
      }
    }
  }
  EXPECT_LE(worst, 1);
  EXPECT_EQ(dirty, 0) << "pixels outside are not zero";
}

TEST(WarpTest, MatchesReferenceAndIsZeroOutside) {
  eachCase([](const Case& c, const PixelFormat& format) {
    SCOPED_TRACE(c.name + (", " + nameOf(format)));
    const Pixels source = noise(c.sourceWidth, c.sourceHeight, format);
    Pixels output(c.width, c.height, format, 0xEE);
    ASSERT_TRUE(warp(source.view(), output.view(), c.quad));
    expectContract(c, source, output);
    for (int y = 0; y + 1 < c.height; ++y) {
      for (int i = 0; i < Pixels::kGap; ++i) ASSERT_EQ(output.at(c.width, y)[i], 0xEE);
    }
  });
}

TEST(WarpTest, IsIdenticalOnEveryInstructionSetAndThreadCount) {
  ASSERT_TRUE(hwy::SupportedTargets() & HWY_STATIC_TARGET) << "the portable kernel is not built";
  eachCase([](const Case& c, const PixelFormat& format) {
    SCOPED_TRACE(c.name + (", " + nameOf(format)));
    const Pixels source = noise(c.sourceWidth, c.sourceHeight, format);
    for (const Sampling sampling : {Sampling::Bilinear, Sampling::Best}) {
      Pixels expected(c.width, c.height, format);
      ASSERT_TRUE(warp(source.view(), expected.view(), c.quad, {sampling, 1, 1}));
      for (const int64_t target : allTargets()) {
        const OneTarget only(target);
        Pixels output(c.width, c.height, format);
        ASSERT_TRUE(warp(source.view(), output.view(), c.quad, {sampling, 1, 1}));
        EXPECT_TRUE(output.bytes == expected.bytes) << "on " << hwy::TargetName(target);
      }
      for (const int threads : {0, 2, 3, 16}) {
        Pixels output(c.width, c.height, format);
        ASSERT_TRUE(warp(source.view(), output.view(), c.quad, {sampling, 1, threads}));
        EXPECT_TRUE(output.bytes == expected.bytes) << "on " << threads << " threads";
      }
    }
  });
}

/// Opaque pixels beside transparent ones of another color, enlarged.
TEST(WarpTest, KeepsHiddenColorsOutOfStraightImages) {
  for (const PixelFormat& format : allFormats()) {
    if (format.alpha != AlphaKind::Straight) continue;
    SCOPED_TRACE(nameOf(format));
    const double max = maxOf(format);
    Pixels source(6, 4, format);
    for (int i = 0; i < 24; ++i) {
      const bool opaque = i % 6 < 3;
      source.set(i % 6, i / 6, opaque ? 0 : 1, max);
      source.set(i % 6, i / 6, 3, opaque ? max : 0);
    }
    for (const Sampling sampling : {Sampling::Bilinear, Sampling::Best}) {
      Pixels output(60, 40, format);
      const Quad quad{{{3.5, 1}, {57, 3}, {55, 36.5}, {1, 38}}};
      ASSERT_TRUE(warp(source.view(), output.view(), quad, {sampling}));
      int translucent = 0, wrong = 0;
      for (int i = 0; i < 2400; ++i) {
        const double alpha = output.get(i % 60, i / 60, 3);
        translucent += alpha > 0 && alpha < max;
        wrong += alpha > 0 && output.get(i % 60, i / 60, 0) != max;
        wrong += output.get(i % 60, i / 60, 1) != 0;
      }
      EXPECT_GT(translucent, 100);
      EXPECT_EQ(wrong, 0);
    }
  }
}

TEST(WarpTest, GivesCoverageOfQuadFromOnePixel) {
  const Quad quad{{{3.5, 1}, {37, 3}, {35, 26.5}, {1, 28}}};
  for (const auto component :
       {ComponentType::UInt8, ComponentType::UInt16, ComponentType::Float32}) {
    const PixelFormat one{1, component, AlphaKind::None}, four{4, component};
    Pixels dot(1, 1, one), opaque(30, 20, four);
    dot.set(0, 0, 0, maxOf(one));
    for (int i = 0; i < 600; ++i) opaque.set(i % 30, i / 30, 3, maxOf(four));
    for (const Sampling sampling : {Sampling::Bilinear, Sampling::Best}) {
      Pixels coverage(40, 30, one), output(40, 30, four);
      ASSERT_TRUE(warp(dot.view(), coverage.view(), quad, {sampling}));
      ASSERT_TRUE(warp(opaque.view(), output.view(), quad, {sampling}));
      for (int i = 0; i < 1200; ++i) {
        ASSERT_EQ(coverage.get(i % 40, i / 40, 0), output.get(i % 40, i / 40, 3)) << nameOf(one);
      }
    }
  }
}

TEST(WarpTest, IdentityKeepsBytes) {
  const struct {
    int width, height, left, top;
  } cases[] = {{33, 21, 0, 0}, {33, 21, 7, 5}, {33, 21, -9, 30}, {33, 21, 500, 0}, {1, 1, 3, 3}};
  for (const PixelFormat& format : allFormats()) {
    const size_t bytes = format.bytesPerPixel();
    for (const auto& c : cases) {
      const Pixels source = noise(c.width, c.height, format);
      const double l = c.left, t = c.top, r = l + c.width, b = t + c.height;
      const Quad quad{{{l, t}, {r, t}, {r, b}, {l, b}}};
      for (const Sampling sampling : {Sampling::Bilinear, Sampling::Best}) {
        Pixels output(48, 40, format, 0xEE);
        ASSERT_TRUE(warp(source.view(), output.view(), quad, {sampling, 1, 2}));
        const std::vector<uint8_t> zero(bytes);
        for (int y = 0; y < 40; ++y) {
          for (int x = 0; x < 48; ++x) {
            const int sx = x - c.left, sy = y - c.top;
            const bool inside = sx >= 0 && sy >= 0 && sx < c.width && sy < c.height;
            const uint8_t* expected = inside ? source.at(sx, sy) : zero.data();
            ASSERT_TRUE(std::equal(expected, expected + bytes, output.at(x, y))) << x << ", " << y;
          }
        }
      }
    }
  }
}

TEST(WarpTest, MatchesReferenceOnRandomQuads) {
  std::mt19937 random(11);
  const std::vector<PixelFormat> formats = allFormats();
  const auto upTo = [&](int most) { return double(random() % (most * 8)) / 8; };
  for (int i = 0; i < 300; ++i) {
    const int sw = 1 + int(random() % 90), sh = 1 + int(random() % 90);
    const int w = 1 + int(random() % 120), h = 1 + int(random() % 90);
    const Quad quad{{{upTo(w) - w / 4, upTo(h) - h / 4},
                     {upTo(w) + w / 4, upTo(h)},
                     {upTo(w) + w / 4, upTo(h) + h / 4},
                     {upTo(w), upTo(h) + h / 4}}};
    const Case c{"random", sw, sh, w, h, quad};
    // Every second time the default, otherwise all formats in turn.
    const PixelFormat format = i % 2 ? PixelFormat() : formats[size_t(i / 2) % formats.size()];
    const Pixels source = noise(sw, sh, format);
    Pixels output(w, h, format, 0xEE), best(w, h, format, 0xEE);
    const bool has = Homography::fromRectangle(sw, sh, quad).has_value();
    EXPECT_EQ(warp(source.view(), output.view(), quad), has);
    EXPECT_EQ(warp(source.view(), best.view(), quad, {Sampling::Best, int(1 + i % 3), 1}), has);
    if (has) expectContract(c, source, output);
    for (int k = 0; format.alpha == AlphaKind::Premultiplied && k < w * h * 3; ++k) {
      const int x = k / 3 % w, y = k / 3 / w;
      ASSERT_LE(best.get(x, y, k % 3), best.get(x, y, 3)) << "a color above its alpha";
    }
    if (HasFailure()) FAIL() << "quad " << i << ", " << nameOf(format);
  }
}

TEST(WarpTest, RejectsDegenerateQuadsAndClearsOutput) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const Pixels source = noise(8, 8);
  const ConstPixelView none{source.bytes.data(), 0, 0, 0};
  const ConstPixelView vast{source.bytes.data(), 32769, 1, 0};
  const Quad good{{{0, 0}, {16, 0}, {16, 16}, {0, 16}}};
  const struct {
    const char* what;
    ConstPixelView source;
    Quad quad;
  } cases[] = {
      {"crossed", source.view(), {{{0, 0}, {16, 16}, {16, 0}, {0, 16}}}},
      {"concave", source.view(), {{{0, 0}, {16, 0}, {4, 4}, {0, 16}}}},
      {"not a number", source.view(), {{{nan, 0}, {16, 0}, {16, 16}, {0, 16}}}},
      {"empty source", none, good},
      {"vast source", vast, good},
  };
  for (const auto& c : cases) {
    Pixels output(16, 16, 0xEE);
    EXPECT_FALSE(warp(c.source, output.view(), c.quad)) << c.what;
    for (int x = 0; x < 16 * 4; ++x) EXPECT_EQ(output.at(0, 9)[x], 0) << c.what;
  }
}

/// Corners at the far ends of what doubles and the output can hold.
TEST(WarpTest, SurvivesAbsurdQuads) {
  const Quad quads[] = {
      {{{-1e9, -1e9}, {1e9, -1e9}, {1e9, 1e9}, {-1e9, 1e9}}},
      {{{0, 0}, {1e-7, 0}, {1e-7, 1e-7}, {0, 1e-7}}},
      {{{-1e15, 3}, {1e15, 2}, {1e15, 50}, {-1e15, 51}}},
      {{{0, 0}, {64, 31.999999}, {64, 32}, {0, 64}}},
      {{{1e12, 1e12}, {2e12, 1e12}, {2e12, 2e12}, {1e12, 2e12}}},
      {{{1e200, 0}, {-1e200, 0}, {-1e200, 1e200}, {1e200, 1e200}}},
  };
  for (const PixelFormat& format : allFormats()) {
    const Pixels source = noise(40, 30, format);
    for (const Quad& quad : quads) {
      for (const Sampling sampling : {Sampling::Bilinear, Sampling::Best}) {
        Pixels output(64, 64, format, 0xEE);
        const bool done = warp(source.view(), output.view(), quad, {sampling, 1, 1});
        EXPECT_EQ(done, Homography::fromRectangle(40, 30, quad).has_value());
      }
    }
  }
}

}  // namespace
}  // namespace kelvar::warp
