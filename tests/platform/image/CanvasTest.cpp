#include "platform/image/Canvas.h"

#include <gtest/gtest.h>

namespace kelvar {
namespace {

using Operation = Canvas::Operation;

Image filled(int width, int height, const QColor& color) {
  QImage pixels(width, height, QImage::Format_ARGB32_Premultiplied);
  pixels.fill(color);
  return Image(pixels);
}

TEST(CanvasTest, OriginIsBottomLeft) {
  Canvas canvas({10, 10});
  canvas.drawImage(filled(2, 3, Qt::red), {1, 2, 2, 3}, Operation::SourceOver);
  for (int y = 0; y < 10; ++y) {
    for (int x = 0; x < 10; ++x) {
      const bool inside = x >= 1 && x < 3 && y >= 5 && y < 8;
      EXPECT_EQ(canvas.pixels().pixel(x, y), inside ? 0xffff0000 : 0) << x << " " << y;
    }
  }
}

TEST(CanvasTest, CopyReplacesAndSourceOverBlends) {
  const Image half = filled(1, 1, QColor(0, 0, 255, 128));
  for (const auto& [operation, expected] :
       {std::pair{Operation::Copy, 0x80000080u}, {Operation::SourceOver, 0xff7f0080u}}) {
    Canvas canvas({1, 1});
    canvas.drawImage(filled(1, 1, Qt::red), {0, 0, 1, 1}, Operation::Copy);
    canvas.drawImage(half, {0, 0, 1, 1}, operation);
    EXPECT_EQ(*reinterpret_cast<const QRgb*>(canvas.pixels().constScanLine(0)), expected);
  }
}

TEST(CanvasTest, AveragesWhereImageShrinks) {
  QImage stripes(64, 64, QImage::Format_ARGB32_Premultiplied);
  for (int y = 0; y < 64; ++y) {
    for (int x = 0; x < 64; ++x) stripes.setPixel(x, y, x % 8 < 4 ? 0xffffffff : 0xff000000);
  }
  Canvas canvas({8, 8});
  canvas.drawImage(Image(stripes), {0, 0, 8, 8}, Operation::SourceOver);
  for (int x = 0; x < 8; ++x) EXPECT_NEAR(qRed(canvas.pixels().pixel(x, 4)), 128, 2);
}

TEST(CanvasTest, StretchesFractionalSizeOverItsPixels) {
  Canvas canvas({3.5, 2.25});
  canvas.drawImage(filled(1, 1, Qt::red), {0, 0, 3.5, 2.25}, Operation::SourceOver);
  EXPECT_EQ(canvas.pixels().size(), QSize(4, 3));
  EXPECT_EQ(canvas.pixels().pixel(3, 0), 0xffff0000);
  EXPECT_EQ(Canvas({99.99999999999999, 100.00000000000001}).pixels().size(), QSize(100, 100));
}

TEST(CanvasTest, KeepsWholePixelsSharpAndSmoothsOtherEdges) {
  const struct {
    QRectF rect;
    int alpha[4];
  } cases[] = {{{0.75, 1, 2, 2}, {0, 255, 255, 0}}, {{0.5, 1, 2.25, 2}, {128, 255, 191, 0}}};
  for (const auto& [rect, alpha] : cases) {
    Canvas canvas({4, 4});
    canvas.drawImage(filled(2, 2, Qt::red), rect, Operation::SourceOver);
    for (int x = 0; x < 4; ++x) EXPECT_NEAR(qAlpha(canvas.pixels().pixel(x, 2)), alpha[x], 3) << x;
  }
}

TEST(CanvasTest, PositiveShadowHeightMovesUpUntilRestored) {
  Canvas canvas({20, 20});
  canvas.save();
  canvas.setShadow(Qt::black, 0, {3, 5});
  canvas.drawImage(filled(2, 2, Qt::red), {4, 4, 2, 2}, Operation::SourceOver);
  canvas.drawImage(filled(2, 2, Qt::red), {12, 4, 2, 2}, Operation::SourceOver);
  canvas.restore();
  canvas.drawImage(filled(2, 2, Qt::red), {0, 14, 2, 2}, Operation::SourceOver);
  const struct {
    int x, y;
    QRgb color;
  } cases[] = {{4, 15, 0xffff0000}, {7, 10, 0xff000000}, {8, 9, 0xff000000}, {15, 10, 0xff000000},
               {6, 11, 0},          {9, 9, 0},           {3, 1, 0},          {3, 0, 0},
               {0, 5, 0xffff0000}};
  for (const auto& [x, y, color] : cases) {
    EXPECT_EQ(canvas.pixels().pixel(x, y), color) << x << " " << y;
  }
}

TEST(CanvasTest, ShadowIsNormalizedGaussian) {
  Canvas canvas({41, 41});
  canvas.setShadow(Qt::black, 4, {0, 0});
  canvas.drawImage(filled(1, 1, Qt::transparent), {20, 20, 1, 1}, Operation::SourceOver);
  EXPECT_EQ(canvas.pixels().pixel(20, 20), 0u) << "nothing drawn, no shadow";
  canvas.drawImage(filled(9, 41, Qt::white), {0, 0, 9, 41}, Operation::SourceOver);
  // Across a straight edge at x = 9 the shadow is the Gaussian's integral, deviation 2.
  for (int x = 9; x < 15; ++x) {
    const double expected = 255 * 0.5 * std::erfc((x + 0.5 - 9) / 2 / std::sqrt(2.0));
    EXPECT_NEAR(qAlpha(canvas.pixels().pixel(x, 20)), expected, 3) << x;
  }
}

TEST(CanvasTest, EmptyCanvasDrawsNothing) {
  for (const QSizeF& size :
       {QSizeF(0, 5), QSizeF(-3, 5), QSizeF(qQNaN(), 5), QSizeF(1e9, 5), QSizeF(32768, 32768)}) {
    Canvas canvas(size);
    canvas.drawImage(filled(1, 1, Qt::red), {0, 0, 1, 1}, Operation::Copy);
    EXPECT_FALSE(canvas.image().isValid());
  }
  Canvas canvas({2, 2});
  canvas.drawImage(filled(1, 1, Qt::red), {0, 0, qQNaN(), 1}, Operation::Copy);
  canvas.drawImage(filled(1, 1, Qt::red), {0, 0, -1, 1}, Operation::Copy);
  canvas.drawImage(Image(), {0, 0, 1, 1}, Operation::Copy);
  EXPECT_EQ(canvas.pixels().pixel(0, 1), 0u);
}

}  // namespace
}  // namespace kelvar
