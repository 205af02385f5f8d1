#include "ui/KVButton.h"

#include <gtest/gtest.h>

#include <QPainter>

#include "Panel.h"

namespace kelvar {
namespace {

class KVButtonTest : public testing::TestWithParam<double> {
 protected:
  void SetUp() override {
    button_.resize(80, 30);
    button_.setFlat(true);
  }

  QImage paint() { return painted(button_, GetParam()); }
  /// The center of the pixels with this color, in points; none if there are none.
  std::optional<QPointF> middleOf(const QImage& image, const QColor& color) {
    QRect box;
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) {
        if (image.pixelColor(x, y) == color) box |= QRect(x, y, 1, 1);
      }
    }
    if (box.isEmpty()) return {};
    return QRectF(box).center() / GetParam();
  }

  KVButton button_;
};

TEST_P(KVButtonTest, PaintsBackgroundOnlyWithColor) {
  EXPECT_EQ(paint().pixelColor(3, 3).alpha(), 0);
  button_.setBackgroundColor(Qt::red);
  const QImage image = paint();
  for (const QPoint& corner : {image.rect().topLeft(), image.rect().bottomRight()}) {
    EXPECT_EQ(image.pixelColor(corner), QColor(Qt::red));
  }
  // The bezel is painted over it.
  button_.setFlat(false);
  EXPECT_NE(paint().pixelColor(image.width() / 2, image.height() / 2), QColor(Qt::red));
}

TEST_P(KVButtonTest, ReplacesOnlyDirtyRegion) {
  const QColor color(255, 0, 0, 128);
  button_.setBackgroundColor(color);
  QImage image(button_.size() * GetParam(), QImage::Format_ARGB32_Premultiplied);
  image.setDevicePixelRatio(GetParam());
  image.fill(Qt::blue);
  button_.render(&image, {10, 5}, QRect(10, 5, 20, 10), {});
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      const bool dirty = QRectF(10, 5, 20, 10).contains(QPointF(x + 0.5, y + 0.5) / GetParam());
      ASSERT_EQ(image.pixelColor(x, y), dirty ? color : QColor(Qt::blue)) << x << " " << y;
    }
  }
}

TEST_P(KVButtonTest, TitleKeepsColorFromLoading) {
  const QString block = QString(QChar(0x2588)).repeated(2);
  button_.setText(block);
  button_.setTextColor(Qt::blue);
  EXPECT_FALSE(middleOf(paint(), Qt::blue)) << "not before it is loaded";
  button_.awakeFromNib();
  const auto middle = middleOf(paint(), Qt::blue);
  ASSERT_TRUE(middle);
  EXPECT_NEAR(middle->x(), 40, 2);
  button_.setTextColor(Qt::green);
  EXPECT_TRUE(middleOf(paint(), Qt::blue)) << "a color set later has no effect";
  EXPECT_FALSE(middleOf(paint(), Qt::green));
  button_.setText(block + block);
  EXPECT_FALSE(middleOf(paint(), Qt::blue)) << "a title set later has the palette's color";
}

TEST_P(KVButtonTest, TitleDefaultsToPaletteColor) {
  button_.setText(QString(QChar(0x2588)).repeated(2));
  QPalette palette = button_.palette();
  palette.setColor(QPalette::ButtonText, Qt::magenta);
  button_.setPalette(palette);
  button_.awakeFromNib();
  EXPECT_TRUE(middleOf(paint(), Qt::magenta));
}

INSTANTIATE_TEST_SUITE_P(PixelsPerPoint, KVButtonTest, testing::Values(1.0, 2.0));

}  // namespace
}  // namespace kelvar
