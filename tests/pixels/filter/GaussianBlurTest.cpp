#include "pixels/filter/GaussianBlur.h"

#include <gtest/gtest.h>

#include <cmath>

#include "platform/image/PixelViews.h"

namespace kelvar {
namespace {

/// An edge becomes the bell's integral.
TEST(GaussianBlurTest, MatchesGaussianAtEdge) {
  for (const double deviation : {1.5, 2.0, 9.5, 33.0}) {
    const int half = blurReach(deviation) + 5, side = 2 * half;
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    for (int y = 0; y < side; ++y) {
      for (int x = 0; x < side; ++x) image.setPixel(x, y, x < half ? 0xff4080ff : 0xff000000);
    }
    blur(viewOf(&image), deviation);
    for (int x = 5; x < side - 5; ++x) {
      const double distance = (x + 0.5 - half) / deviation;
      const double inside = 0.5 * std::erfc(distance / std::sqrt(2.0));
      // Away from the image's ends, beyond which it is empty.
      if (x < blurReach(deviation) || x >= side - blurReach(deviation)) continue;
      EXPECT_NEAR(qBlue(image.pixel(x, half)), 255 * inside, 2) << deviation << " at " << x;
    }
  }
}

TEST(GaussianBlurTest, PreservesTotal) {
  for (const auto format : {QImage::Format_ARGB32_Premultiplied, QImage::Format_Alpha8}) {
    QImage image(61, 61, format);
    image.fill(Qt::transparent);
    image.setPixelColor(30, 30, QColor(0, 0, 0, 255));
    const QImage before = image;
    blur(viewOf(&image), 0);
    EXPECT_EQ(image, before);
    blur(viewOf(&image), 1.5);
    double sum = 0;
    for (int y = 0; y < 61; ++y) {
      for (int x = 0; x < 61; ++x) sum += image.pixelColor(x, y).alpha();
    }
    EXPECT_NEAR(sum, 255, 20);
    EXPECT_EQ(image.pixelColor(29, 30), image.pixelColor(31, 30));
    EXPECT_EQ(image.pixelColor(30, 29), image.pixelColor(29, 30));
  }
}

}  // namespace
}  // namespace kelvar
