#include "geometry/KVImage.h"

#include <gtest/gtest.h>

#include <cmath>

#include "platform/LogCapture.h"

namespace kelvar {
namespace {

/// A uniform color.
ImageRef plain(int width, int height, const QColor& color) {
  QImage pixels(width, height, QImage::Format_ARGB32_Premultiplied);
  pixels.fill(color);
  return std::make_shared<Image>(pixels);
}

/// Red over blue, opaque.
ImageRef makeImage(int width, int height, QSizeF size = {}) {
  QImage pixels(width, height, QImage::Format_ARGB32_Premultiplied);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) pixels.setPixel(x, y, y < height / 2 ? 0xffff0000 : 0xff0000ff);
  }
  return std::make_shared<Image>(pixels, size.isEmpty() ? QSizeF(width, height) : size);
}

TEST(KVImageTest, BitmapsHaveTruncatedSizeDrawnFromBottomLeft) {
  EXPECT_EQ(KVImage::getCGImage(makeImage(107, 52, {10.7, 5.2})).size(), QSize(10, 5));
  const ImageRef whole = makeImage(20, 10);
  EXPECT_EQ(KVImage::getCGImage(whole), whole->pixels());
  // 2.5 points of red on top lose half a point, so that red covers rows 0 and 1.
  const QImage cut = KVImage::getCGImage(makeImage(50, 50, {5.5, 5.5}));
  EXPECT_EQ(cut.pixel(2, 0), 0xffff0000);
  EXPECT_EQ(cut.pixel(2, 1), 0xffff0000);
  EXPECT_NEAR(qRed(cut.pixel(2, 2)), 64, 64);
  EXPECT_EQ(cut.pixel(2, 3), 0xff0000ff);
  EXPECT_EQ(cut.pixel(4, 4), 0xff0000ff);
  EXPECT_TRUE(KVImage::getCGImage(makeImage(5, 5, {0.9, 5})).isNull());
  EXPECT_TRUE(KVImage::getCGImage(nullptr).isNull());
}

TEST(KVImageTest, ScalingChangesCallersImage) {
  const ImageRef image = makeImage(20, 10);
  const ImageRef scaled = KVImage::scaleImage(image, {40, 30});
  EXPECT_EQ(image->size(), QSizeF(40, 30));
  EXPECT_EQ(image->pixels().size(), QSize(20, 10));
  EXPECT_EQ(scaled->size(), QSizeF(40, 30));
  EXPECT_EQ(scaled->pixels().size(), QSize(40, 30));
  EXPECT_EQ(scaled->pixels().pixel(0, 0), 0xffff0000);
  EXPECT_EQ(scaled->pixels().pixel(39, 29), 0xff0000ff);
}

TEST(KVImageTest, FillsFrame) {
  const struct {
    const char* what;
    KVRectRef frame;
    double scale;
    bool trim;
    QSizeF size;
    QRect image;
  } cases[] = {
      {"centered", KVRectMake(0, 0, 100, 100), 1, false, {100, 100}, {0, 25, 100, 50}},
      {"trimmed", KVRectMake(0, 0, 100, 100), 1, true, {100, 50}, {0, 0, 100, 50}},
      {"scaled", KVRectMake(0, 0, 100, 100), 2, false, {200, 200}, {0, 50, 200, 100}},
      {"scaled, trimmed", KVRectMake(0, 0, 100, 100), 2, true, {200, 100}, {0, 0, 200, 100}},
      {"scale 0 is 1", KVRectMake(0, 0, 100, 100), 0, false, {100, 100}, {0, 25, 100, 50}},
      {"origin", KVRectMake(70, -9, 100, 100), 1, false, {100, 100}, {0, 25, 100, 50}},
      {"negative", KVRectMake(0, 0, 100, 100), -1, false, {100, 100}, {0, 25, 100, 50}},
      {"to the side", KVRectMake(0, 0, 140, 50), 1, false, {140, 50}, {20, 0, 100, 50}},
  };
  for (const auto& [what, frame, scale, trim, size, rect] : cases) {
    const ImageRef filled = KVImage::fillImage(makeImage(200, 100), frame, scale, trim);
    ASSERT_TRUE(filled && filled->isValid()) << what;
    EXPECT_EQ(filled->size(), size) << what;
    const QImage pixels = filled->pixels();
    ASSERT_EQ(pixels.size(), size.toSize()) << what;
    EXPECT_EQ(pixels.pixel(rect.left(), rect.top()), 0xffff0000) << what;
    EXPECT_EQ(pixels.pixel(rect.right(), rect.bottom()), 0xff0000ff) << what;
    const QRect inShadow = rect.adjusted(-3, -3, 3, 3);
    for (const QPoint& corner : {QPoint(0, 0), pixels.rect().bottomRight()}) {
      EXPECT_EQ(qAlpha(pixels.pixel(corner)) == 0, !inShadow.contains(corner)) << what;
    }
  }
}

TEST(KVImageTest, FillsWithFaintShadow) {
  const auto alpha = [](const ImageRef& image, int y) {
    return qAlpha(image->pixels().pixel(50, y));
  };
  const KVRectRef frame = KVRectMake(0, 0, 100, 100);
  const ImageRef rim = KVImage::fillImage(makeImage(200, 100), frame, 1, false);
  // A Gaussian of half the blur's radius puts 10.7 % of the shadow's alpha next to the edge.
  for (const int y : {24, 75}) {
    EXPECT_NEAR(alpha(rim, y), 0.107 * 64, 1);
    EXPECT_EQ(alpha(rim, y < 50 ? y - 1 : y + 1), 0);
    EXPECT_EQ(rim->pixels().pixel(50, y) & 0xffffff, 0u);
  }
  const ImageRef up = KVImage::fillImage(makeImage(200, 100), frame, 1, false, {0, 10});
  EXPECT_EQ(alpha(up, 20), 64);
  EXPECT_EQ(alpha(up, 10), 0);
  EXPECT_EQ(alpha(up, 76), 0);
}

TEST(KVImageTest, BlendsWithShadowBelow) {
  // The shadow has a quarter of the image's alpha, and the image lets it through.
  const struct {
    QColor color;
    int alpha;
  } cases[] = {
      {QColor(255, 0, 0, 255), 255},
      {QColor(255, 0, 0, 128), 128 + 127 * 32 / 255},
      {QColor(0, 0, 255, 40), 40 + 215 * 10 / 255},
      {QColor(0, 0, 0, 0), 0},
  };
  const KVRectRef frame = KVRectMake(0, 0, 60, 40);
  for (const auto& [color, alpha] : cases) {
    const ImageRef filled = KVImage::fillImage(plain(60, 40, color), frame, 1, false);
    const QRgb middle = filled->pixels().pixel(30, 20);
    EXPECT_NEAR(qAlpha(middle), alpha, 1);
    // Premultiplied, and the shadow is black.
    EXPECT_NEAR(qRed(middle), color.red() * color.alpha() / 255, 1);
    EXPECT_NEAR(qBlue(middle), color.blue() * color.alpha() / 255, 1);
  }
}

TEST(KVImageTest, CropsToWholePixelsAndKeepsFrameSize) {
  const struct {
    const char* what;
    KVRectRef frame;
    QSize pixels;
    QSizeF size;
  } cases[] = {
      {"inside", KVRectMake(2, 3, 5, 4), {5, 4}, {5, 4}},
      {"widened", KVRectMake(2.5, 3.25, 5, 4), {6, 5}, {5, 4}},
      {"clipped", KVRectMake(-5, 8, 100, 100), {20, 2}, {100, 100}},
      {"rounding is not width",
       KVRectMake(2, 3, 4.99999999999999, 4.00000000000001),
       {5, 4},
       {4.99999999999999, 4.00000000000001}},
      {"outside", KVRectMake(50, 0, 5, 5), {0, 0}, {5, 5}},
      {"null", nullptr, {0, 0}, {0, 0}},
      {"not a number", KVRectMake(std::nan(""), 0, 5, 5), {0, 0}, {5, 5}},
  };
  for (const auto& [what, frame, pixels, size] : cases) {
    const ImageRef crop = KVImage::cropImage(makeImage(20, 10), frame);
    ASSERT_TRUE(crop) << what;
    EXPECT_EQ(crop->pixels().size(), pixels) << what;
    EXPECT_EQ(crop->size(), size) << what;
  }
  const ImageRef crop = KVImage::cropImage(makeImage(20, 10), KVRectMake(0, 4, 1, 2));
  EXPECT_EQ(crop->pixels().pixel(0, 0), 0xffff0000) << "y counts from the top";
  EXPECT_EQ(crop->pixels().pixel(0, 1), 0xff0000ff);
}

TEST(KVImageTest, RejectsInvalidImages) {
  for (const ImageRef& image : {ImageRef(), std::make_shared<Image>()}) {
    LogCapture log;
    EXPECT_FALSE(KVImage::scaleImage(image, {5, 5}));
    EXPECT_FALSE(KVImage::fillImage(image, KVRectMake(0, 0, 5, 5), 1, true));
    EXPECT_EQ(log.lines(), QStringList(2, QStringLiteral("Invalid Image")));
    const ImageRef crop = KVImage::cropImage(image, KVRectMake(0, 0, 5, 5));
    ASSERT_TRUE(crop);
    EXPECT_FALSE(crop->isValid());
  }
}

TEST(KVImageTest, HasNoPixelsForImpossibleSizes) {
  EXPECT_FALSE(KVImage::scaleImage(makeImage(2, 2), {0, 5})->isValid());
  EXPECT_FALSE(KVImage::scaleImage(makeImage(2, 2), {1e6, 1e6})->isValid());
  EXPECT_FALSE(KVImage::fillImage(makeImage(2, 2), nullptr, 1, false)->isValid());
  EXPECT_FALSE(KVImage::fillImage(makeImage(2, 2), KVRectMake(0, 0, 9, 9), 1e9, false)->isValid());
}

}  // namespace
}  // namespace kelvar
