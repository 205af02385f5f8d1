#include "geometry/KVShape.h"

#include <gtest/gtest.h>

#include "geometry/Points.h"

namespace kelvar {
namespace {

TEST(KVShapeTest, MeasuresAndNormalizes) {
  const struct {
    const char* path;
    QSizeF realSize;
    QRectF croppingRect;  // For bounds (5, 5, 100, 40).
    const char* normalized;
  } cases[] = {
      {"0,0 100,0 100,50 0,50", {100, 50}, {5, 5, 100, 40}, "0,0 100,0 100,50 0,50"},
      {"10,10 110,10 110,60 10,60", {110, 60}, {5, 5, 100, 40}, "10,10 110,10 110,60 10,60"},
      {"-20,0 80,0 80,40 -20,40", {100, 40}, {25, 5, 100, 40}, "0,0 100,0 100,40 0,40"},
      {"-20,-10 -5,-10 -5,-2", {20, 10}, {25, 15, 100, 40}, "0,0 15,0 15,8"},
      {"0,0 0,50 100,50 100,0", {100, 50}, {5, 5, 100, 40}, "0,0 100,0 100,50 0,50"},
      {"0,0 0,9 5,9 9,5 9,0", {9, 9}, {5, 5, 100, 40}, "0,0 9,0 9,5 5,9 0,9"},
      {"", {0, 0}, {5, 5, 100, 40}, ""},
      {"7,-3", {7, 3}, {5, 8, 100, 40}, "7,0"},
  };
  for (const auto& [path, realSize, croppingRect, normalized] : cases) {
    const KVShape shape(KVRectMake(5, 5, 100, 40), points(path));
    EXPECT_EQ(shape.realSize(), realSize) << path;
    EXPECT_EQ(shape.croppingRect()->CGRect(), croppingRect) << path;
    EXPECT_EQ(shape.normalizedPoints(), points(normalized)) << path;
  }
}

TEST(KVShapeTest, Scales) {
  KVShape shape(KVRectMake(5, 6, 100, 40), points("-20,0 80,0 80,40"));
  EXPECT_EQ(shape.scale(), 1u);
  for (const auto& [scale, factor] : {std::pair{0, 1.0}, {1, 1.0}, {2, 2.0}}) {
    shape.setScale(uint64_t(scale));
    EXPECT_EQ(shape.scaledSize(), QSizeF(100 * factor, 40 * factor));
    EXPECT_EQ(shape.scaledCroppingRect()->CGRect(),
              QRectF(25 * factor, 6 * factor, 100 * factor, 40 * factor));
  }
}

TEST(KVShapeTest, ReadsNullBoundsAsZeroAndSharesThem) {
  KVShape shape(nullptr, points("-1,-2"));
  EXPECT_EQ(shape.croppingRect()->CGRect(), QRectF(1, 2, 0, 0));
  const KVRectRef bounds = KVRectMake(0, 0, 1, 1);
  shape.setBounds(bounds);
  bounds->setX(10);
  EXPECT_EQ(shape.croppingRect()->x(), 11);
}

TEST(KVShapeTest, ReversesAroundFirstPoint) {
  EXPECT_EQ(KVShape::reversedPoints(points("0,0 1,0 1,1 0,1")), points("0,0 0,1 1,1 1,0"));
  EXPECT_EQ(KVShape::reversedPoints(points("4,2")), points("4,2"));
  EXPECT_EQ(KVShape::reversedPoints({}), PointList());
}

}  // namespace
}  // namespace kelvar
