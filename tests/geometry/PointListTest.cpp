#include "geometry/PointList.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <limits>
#include <random>

namespace kelvar {
namespace {

TEST(PointListTest, PrintsFewestDigits) {
  const struct {
    double number;
    const char* text;
  } cases[] = {
      {0, "0"},
      {-0.0, "0"},
      {100, "100"},
      {-1.5, "-1.5"},
      {0.1, "0.1"},
      {0.1 + 0.2, "0.30000000000000004"},
      {1234567, "1234567"},
      {0.0001, "0.0001"},
      {0.00001, "1e-05"},
      {1e16, "10000000000000000"},
      {1e17, "1e+17"},
      {-2.5e300, "-2.5e+300"},
      {std::numeric_limits<double>::denorm_min(), "5e-324"},
      {std::numeric_limits<double>::infinity(), "inf"},
  };
  for (const auto& [number, text] : cases) {
    EXPECT_EQ(stringFromNumber(number), QLatin1String(text));
  }
}

TEST(PointListTest, RoundTripsDoublesExactly) {
  std::mt19937_64 random(7);
  for (int i = 0; i < 20000; ++i) {
    const double wild = std::bit_cast<double>(random());
    const double tame = double(random() % 2000000) / 1000 - 1000;
    if (std::isnan(wild)) continue;
    const QPointF read = pointFromString(stringFromPoint({wild, tame}));
    EXPECT_EQ(read.x(), wild);
    EXPECT_EQ(read.y(), tame);
  }
}

TEST(PointListTest, ParsesAnyInput) {
  const struct {
    const char* text;
    double x, y;
  } cases[] = {
      {"{1, 2}", 1, 2},
      {"{ 1.5 ,-2 }", 1.5, -2},
      {"{1,2}", 1, 2},
      {"1, 2", 1, 2},
      {"{+1, +2}", 1, 2},
      {"{1e2, .5}", 100, 0.5},
      {"", 0, 0},
      {"{}", 0, 0},
      {"{7}", 7, 0},
      {"{a, 2}", 0, 2},
      {"{1, b}", 1, 0},
      {"{, 4}", 0, 4},
      {"{1x, 2y}", 1, 2},
      {"{1, 2, 3}", 1, 2},
      {"{{1, 2}, 3}", 1, 2},
      {"{1e999, 2}", 0, 2},
      {"\xe9, 3", 0, 3},
  };
  for (const auto& [text, x, y] : cases) {
    const QPointF point = pointFromString(QString::fromLatin1(text));
    EXPECT_EQ(point.x(), x) << text;
    EXPECT_EQ(point.y(), y) << text;
  }
}

TEST(PointListTest, WindingIncludesClosingEdge) {
  const struct {
    const char* points;
    double sum;
    bool clockwise;
  } cases[] = {
      {"", 0, true},
      {"3,4", 0, true},
      {"0,0 10,0 10,10 0,10", -200, true},
      {"0,10 10,10 10,0 0,0", 200, false},
      {"5,5 15,5 15,15", -100, true},
      {"0,0 5,5 10,10", 0, true},
      {"0,0 nan,5 10,10", std::nan(""), true},
  };
  for (const auto& [text, sum, clockwise] : cases) {
    const PointList points = QString::fromLatin1(text).split(u' ', Qt::SkipEmptyParts);
    const double got = windingSum(points);
    EXPECT_TRUE(got == sum || (std::isnan(got) && std::isnan(sum))) << text << ": " << got;
    EXPECT_EQ(isClockwise(points), clockwise) << text;
  }
}

}  // namespace
}  // namespace kelvar
