#include "geometry/warp/Warp.h"

#include <gtest/gtest.h>
#include <hwy/highway.h>
#include <hwy/targets.h>

#include <limits>
#include <string>

#include "geometry/warp/Pixels.h"
#include "geometry/warp/ReferenceWarp.h"

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

/// Every way that the kernel takes: windows of one, two and four parts, scattered samples, runs of
/// each length and none, edges on all sides, pictures too small for windows.
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

void expectContract(const Case& c, const Pixels& source, const Pixels& output) {
  const ReferenceWarp reference(source.view(), c.quad);
  int worst = 0, dirty = 0;
  for (int y = 0; y < c.height; ++y) {
    for (int x = 0; x < c.width; ++x) {
      const Point centre{x + 0.5, y + 0.5};
      const double depth = reference.depth(centre);
      const uint8_t* got = output.at(x, y);
      if (depth < -1e-6) dirty += (got[0] | got[1] | got[2] | got[3]) != 0;
      if (depth < 0.01) continue;
      const ReferenceWarp::Colour exact = reference.sample(centre);
      for (int i = 0; i < 4; ++i) {
        worst = std::max(worst, std::abs(int(std::lround(exact[i])) - int(got[i])));
      }
    }
  }
  EXPECT_LE(worst, 1);
  EXPECT_EQ(dirty, 0) << "pixels outside are not transparent";
}

TEST(Warp, IsTheExactSampleWithinOneAndTransparentOutside) {
  for (const Case& c : kCases) {
    SCOPED_TRACE(c.name);
    const Pixels source = noise(c.sourceWidth, c.sourceHeight);
    Pixels output(c.width, c.height, 0xEE);
    ASSERT_TRUE(warp(source.view(), output.view(), c.quad));
    expectContract(c, source, output);
    for (int y = 0; y + 1 < c.height; ++y) {
      for (int i = 0; i < Pixels::kGap; ++i) ASSERT_EQ(output.at(c.width, y)[i], 0xEE);
    }
  }
}

TEST(Warp, GivesTheSameBytesOnEveryInstructionSetAndThreadCount) {
  ASSERT_TRUE(hwy::SupportedTargets() & HWY_STATIC_TARGET) << "the portable kernel is not built";
  for (const Case& c : kCases) {
    const Pixels source = noise(c.sourceWidth, c.sourceHeight);
    for (const Sampling sampling : {Sampling::Bilinear, Sampling::Best}) {
      Pixels expected(c.width, c.height);
      ASSERT_TRUE(warp(source.view(), expected.view(), c.quad, {sampling, 1, 1}));
      for (const int64_t target : allTargets()) {
        const OneTarget only(target);
        Pixels output(c.width, c.height);
        ASSERT_TRUE(warp(source.view(), output.view(), c.quad, {sampling, 1, 1}));
        EXPECT_TRUE(output.bytes == expected.bytes) << c.name << " on " << hwy::TargetName(target);
      }
      for (const int threads : {0, 2, 3, 16}) {
        Pixels output(c.width, c.height);
        ASSERT_TRUE(warp(source.view(), output.view(), c.quad, {sampling, 1, threads}));
        EXPECT_TRUE(output.bytes == expected.bytes) << c.name << " on " << threads << " threads";
      }
    }
  }
}

TEST(Warp, KeepsAnImageOnItsOwnRectangleByteForByte) {
  const struct {
    int width, height, left, top;
  } cases[] = {{33, 21, 0, 0}, {33, 21, 7, 5}, {33, 21, -9, 30}, {33, 21, 500, 0}, {1, 1, 3, 3}};
  for (const auto& c : cases) {
    const Pixels source = noise(c.width, c.height);
    const double l = c.left, t = c.top, r = l + c.width, b = t + c.height;
    for (const Sampling sampling : {Sampling::Bilinear, Sampling::Best}) {
      Pixels output(48, 40, 0xEE);
      ASSERT_TRUE(
          warp(source.view(), output.view(), {{{l, t}, {r, t}, {r, b}, {l, b}}}, {sampling, 1, 2}));
      for (int y = 0; y < 40; ++y) {
        for (int x = 0; x < 48; ++x) {
          const int sx = x - c.left, sy = y - c.top;
          const bool inside = sx >= 0 && sy >= 0 && sx < c.width && sy < c.height;
          for (int i = 0; i < 4; ++i) {
            ASSERT_EQ(output.at(x, y)[i], inside ? source.at(sx, sy)[i] : 0) << x << ", " << y;
          }
        }
      }
    }
  }
}

TEST(Warp, FollowsRandomQuads) {
  std::mt19937 random(11);
  const auto upTo = [&](int most) { return double(random() % (most * 8)) / 8; };
  for (int i = 0; i < 300; ++i) {
    const int sw = 1 + int(random() % 90), sh = 1 + int(random() % 90);
    const int w = 1 + int(random() % 120), h = 1 + int(random() % 90);
    const Quad quad{{{upTo(w) - w / 4, upTo(h) - h / 4},
                     {upTo(w) + w / 4, upTo(h)},
                     {upTo(w) + w / 4, upTo(h) + h / 4},
                     {upTo(w), upTo(h) + h / 4}}};
    const Case c{"random", sw, sh, w, h, quad};
    const Pixels source = noise(sw, sh);
    Pixels output(w, h, 0xEE), best(w, h, 0xEE);
    const bool has = Homography::fromRectangle(sw, sh, quad).has_value();
    EXPECT_EQ(warp(source.view(), output.view(), quad), has);
    EXPECT_EQ(warp(source.view(), best.view(), quad, {Sampling::Best, int(1 + i % 3), 1}), has);
    if (has) expectContract(c, source, output);
    for (int y = 0; y < h; ++y) {
      for (int x = 0; x < w; ++x) {
        const uint8_t* p = best.at(x, y);
        ASSERT_LE(std::max({p[0], p[1], p[2]}), p[3]) << "a colour above its alpha";
      }
    }
    if (HasFailure()) FAIL() << "quad " << i;
  }
}

TEST(Warp, RefusesWhatHasNoMapAndClearsTheOutput) {
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
TEST(Warp, SurvivesAbsurdQuads) {
  const Pixels source = noise(40, 30);
  const Quad quads[] = {
      {{{-1e9, -1e9}, {1e9, -1e9}, {1e9, 1e9}, {-1e9, 1e9}}},
      {{{0, 0}, {1e-7, 0}, {1e-7, 1e-7}, {0, 1e-7}}},
      {{{-1e15, 3}, {1e15, 2}, {1e15, 50}, {-1e15, 51}}},
      {{{0, 0}, {64, 31.999999}, {64, 32}, {0, 64}}},
      {{{1e12, 1e12}, {2e12, 1e12}, {2e12, 2e12}, {1e12, 2e12}}},
      {{{1e200, 0}, {-1e200, 0}, {-1e200, 1e200}, {1e200, 1e200}}},
  };
  for (const Quad& quad : quads) {
    for (const Sampling sampling : {Sampling::Bilinear, Sampling::Best}) {
      Pixels output(64, 64, 0xEE);
      const bool done = warp(source.view(), output.view(), quad, {sampling, 1, 1});
      EXPECT_EQ(done, Homography::fromRectangle(40, 30, quad).has_value());
    }
  }
}

}  // namespace
}  // namespace kelvar::warp
