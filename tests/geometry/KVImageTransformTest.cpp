#include "geometry/KVImageTransform.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "geometry/Points.h"
#include "platform/LogCapture.h"

namespace kelvar {
namespace {

/// Every pixel has its own color.
ImageRef makeImage(int width, int height) {
  QImage pixels(width, height, QImage::Format_ARGB32_Premultiplied);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) pixels.setPixel(x, y, qRgb(x, y, (x * 7 + y * 13) & 255));
  }
  return std::make_shared<Image>(pixels);
}

void setCorners(KVImageTransform& transform, const char* text) {
  const PointList list = points(text);
  transform.setTl(pointFromString(list[0]));
  transform.setTr(pointFromString(list[1]));
  transform.setBr(pointFromString(list[2]));
  transform.setBl(pointFromString(list[3]));
}

TEST(KVImageTransformTest, StartsAsTheIdentity) {
  KVImageTransform transform;
  EXPECT_EQ(transform.points(), points("0,0 0,0 0,0 0,0"));
  transform.setInput(makeImage(200, 100));
  EXPECT_EQ(transform.points(), points("0,0 200,0 200,100 0,100"));
  const ImageRef output = transform.createOutput();
  EXPECT_EQ(output->size(), QSizeF(200, 100));
  EXPECT_EQ(output->pixels(), transform.input()->pixels());
}

TEST(KVImageTransformTest, FlipsThenRotates) {
  const struct {
    bool flipped;
    uint64_t rotation;
    const char* order;  // 1 top-left, 2 top-right, 3 bottom-right, 4 bottom-left.
  } cases[] = {
      {false, 0, "1,1 2,2 3,3 4,4"},
      {false, 1, "4,4 1,1 2,2 3,3"},
      {false, 4, "1,1 2,2 3,3 4,4"},
      {false, 5, "4,4 1,1 2,2 3,3"},
      {true, 0, "2,2 1,1 4,4 3,3"},
      {true, 1, "3,3 2,2 1,1 4,4"},
      {false, std::numeric_limits<uint64_t>::max(), "2,2 3,3 4,4 1,1"},
  };
  for (const auto& [flipped, rotation, order] : cases) {
    KVImageTransform transform;
    setCorners(transform, "1,1 2,2 3,3 4,4");
    transform.setFlipped(flipped);
    transform.setRotation(rotation);
    EXPECT_EQ(transform.points(), points(order)) << flipped << " " << rotation;
  }
}

TEST(KVImageTransformTest, RotatesCounterclockwise) {
  KVImageTransform transform;
  transform.setInput(makeImage(40, 40));
  transform.setRotation(1);
  const QImage turned = transform.createOutput()->pixels();
  transform.setRotation(0);
  transform.setFlipped(true);
  const QImage flipped = transform.createOutput()->pixels();
  for (int y = 0; y < 40; ++y) {
    for (int x = 0; x < 40; ++x) {
      ASSERT_EQ(turned.pixel(y, 39 - x), transform.input()->pixels().pixel(x, y));
      ASSERT_EQ(flipped.pixel(39 - x, y), transform.input()->pixels().pixel(x, y));
    }
  }
}

TEST(KVImageTransformTest, CoversBoundingBoxInWholePixels) {
  const struct {
    const char* what;
    const char* corners;
    double scale;
    QSizeF size;
    const char* quad;
  } cases[] = {
      {"whole", "0,0 100,20 100,80 0,100", 1, {100, 100}, "0,0 100,20 100,80 0,100"},
      {"scale", "0,0 100,20 100,80 0,100", 2, {200, 200}, "0,0 200,40 200,160 0,200"},
      {"scale 0 is 1", "0,0 100,20 100,80 0,100", 0, {100, 100}, "0,0 100,20 100,80 0,100"},
      {"away from the origin", "30,-7 70,-7 70,13 30,13", 1, {40, 20}, "0,0 40,0 40,20 0,20"},
      {"x on whole pixels",
       "0.25,0 10.5,0 10.5,5 0.25,5",
       1,
       {11, 5},
       "0.25,0 10.5,0 10.5,5 0.25,5"},
      {"y from the lowest point",
       "0,0.25 10,0.25 10,5.5 0,5.5",
       1,
       {10, 6},
       "0,0.75 10,0.75 10,6 0,6"},
      {"left of zero", "-0.5,0 9.5,0 9.5,5 -0.5,5", 1, {11, 5}, "0.5,0 10.5,0 10.5,5 0.5,5"},
      {"rounding is not width",
       "0,0 99.99999999999999,0 100.00000000000001,50 -1e-14,50",
       1,
       {100, 50},
       nullptr},
      {"scale that is not whole", "0,0 30,0 30,30 0,30", 1.1, {33, 33}, nullptr},
      {"negative scale", "0,0 10,0 10,5 0,5", -1, {10, 5}, "10,5 0,5 0,0 10,0"},
  };
  for (const auto& [what, corners, scale, size, quad] : cases) {
    KVImageTransform transform;
    transform.setInput(makeImage(20, 10));
    setCorners(transform, corners);
    transform.setScale(scale);
    const auto placement = transform.placement();
    EXPECT_EQ(QSizeF(placement.width, placement.height), size) << what;
    EXPECT_EQ(transform.createOutput()->size(), size) << what;
    EXPECT_EQ(transform.createOutput()->pixels().size(), size.toSize()) << what;
    if (!quad) continue;
    const PointList expected = points(quad);
    for (size_t i = 0; i < 4; ++i) {
      EXPECT_EQ(stringFromPoint({placement.quad[i].x, placement.quad[i].y}), expected[qsizetype(i)])
          << what;
    }
  }
}

TEST(KVImageTransformTest, MapsEveryPixelWhateverNominalSize) {
  KVImageTransform transform;
  const ImageRef dense = std::make_shared<Image>(makeImage(40, 20)->pixels(), QSizeF(20, 10));
  transform.setInput(dense);
  EXPECT_EQ(transform.points(), points("0,0 20,0 20,10 0,10"));
  transform.setScale(2);
  EXPECT_EQ(transform.createOutput()->pixels(), dense->pixels());
}

TEST(KVImageTransformTest, BadInputGivesInvalidImage) {
  const struct {
    const char* what;
    ImageRef input;
    const char* corners;
    double scale;
    bool logged;
  } cases[] = {
      {"no input", nullptr, "0,0 9,0 9,9 0,9", 1, false},
      {"invalid input", std::make_shared<Image>(), "0,0 9,0 9,9 0,9", 1, false},
      {"collinear", makeImage(4, 4), "0,0 5,0 9,0 0,9", 1, false},
      {"crossed", makeImage(4, 4), "0,0 9,9 9,0 0,9", 1, false},
      {"concave", makeImage(4, 4), "0,0 9,0 2,2 0,9", 1, false},
      {"not finite", makeImage(4, 4), "0,0 inf,0 9,9 0,9", 1, false},
      {"not a scale", makeImage(4, 4), "0,0 9,0 9,9 0,9", std::nan(""), false},
      {"too wide", makeImage(4, 4), "0,0 32769,0 32769,1 0,1", 1, true},
      {"too many pixels", makeImage(4, 4), "0,0 20000,0 20000,20000 0,20000", 1, true},
      {"too large a scale", makeImage(4, 4), "0,0 9,0 9,9 0,9", 1e12, true},
  };
  for (const auto& [what, input, corners, scale, logged] : cases) {
    LogCapture log;
    KVImageTransform transform;
    transform.setInput(input);
    setCorners(transform, corners);
    transform.setScale(scale);
    const ImageRef output = transform.createOutput();
    ASSERT_TRUE(output) << what;
    EXPECT_FALSE(output->isValid()) << what;
    EXPECT_EQ(output->size(), QSizeF(0, 0)) << what;
    EXPECT_EQ(!log.lines().isEmpty(), logged) << what;
  }
}

}  // namespace
}  // namespace kelvar
