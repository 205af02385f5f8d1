#include "ui/KVView.h"

#include <gtest/gtest.h>

#include <cmath>

#include "Panel.h"
#include "ui/View.h"

namespace kelvar {
namespace {

class KVViewTest : public testing::TestWithParam<double> {
 protected:
  void SetUp() override { view_->resize(40, 30); }
  void TearDown() override { delete view_; }

  QImage paint() { return painted(*view_, GetParam()); }
  /// The color of the pixel whose corner is at that point of the view.
  static QColor at(const QImage& image, double x, double y) {
    return image.pixelColor(int(x * GetParam()), int(y * GetParam()));
  }

  KVView* view_ = KVView::initWithCoder(nullptr);
};

TEST_P(KVViewTest, AlwaysFillsBounds) {
  const struct {
    QColor background, painted;
  } cases[] = {
      {Qt::red, Qt::red}, {QColor(0, 0, 255, 128), QColor(0, 0, 255, 128)}, {QColor(), Qt::black}};
  for (const auto& [background, painted] : cases) {
    view_->setBackgroundColor(background);
    const QImage image = paint();
    for (const QPointF& point : {QPointF(0, 0), {39.5, 0}, {0, 29.5}, {20, 15}, {39.5, 29.5}}) {
      EXPECT_EQ(at(image, point.x(), point.y()), painted) << point.x() << " " << point.y();
    }
  }
  EXPECT_FALSE(view_->isOpaque());
}

TEST_P(KVViewTest, HalfOfBorderIsInside) {
  view_->setBackgroundColor(Qt::white);
  view_->setBorderColor(Qt::blue);
  view_->setBorderWidth(4);
  const QImage image = paint();
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) {
      const int in = int(2 * GetParam());
      const bool border = x < in || y < in || x >= image.width() - in || y >= image.height() - in;
      ASSERT_EQ(image.pixelColor(x, y), border ? QColor(Qt::blue) : QColor(Qt::white))
          << x << " " << y;
    }
  }
}

TEST_P(KVViewTest, BorderNeedsColorAndWidth) {
  view_->setBackgroundColor(Qt::white);
  const std::pair<QColor, double> cases[] = {{Qt::blue, 0}, {QColor(), 2}, {Qt::blue, -1}};
  for (const auto& [color, width] : cases) {
    view_->setBorderColor(color);
    view_->setBorderWidth(width);
    EXPECT_EQ(at(paint(), 0, 0), QColor(Qt::white));
  }
}

TEST_P(KVViewTest, FillAndBorderCastInnerShadow) {
  view_->setBackgroundColor(QColor(255, 0, 0, 0));
  view_->setBorderColor(Qt::blue);
  view_->setBorderWidth(4);
  view_->setInnerShadowColor(Qt::green);
  view_->setInnerShadowSize({5, -3});
  const QImage image = paint();
  const struct {
    double x, y;
    QColor color;
  } points[] = {{1, 15, Qt::blue},        {2.5, 15, Qt::transparent}, {5, 15, Qt::green},
                {6.5, 15, Qt::green},     {7, 15, Qt::transparent},   {20, 1, Qt::blue},
                {20, 2.5, Qt::green},     {20, 3, Qt::green},         {20, 4.5, Qt::green},
                {20, 5, Qt::transparent}, {20, 29, Qt::blue}};
  for (const auto& [x, y, color] : points) EXPECT_EQ(at(image, x, y), color) << x << " " << y;

  // Under a translucent fill.
  view_->setBorderColor(QColor());
  view_->setBackgroundColor(QColor(255, 255, 255, 128));
  view_->setInnerShadowColor(Qt::black);
  const QImage under = paint();
  EXPECT_EQ(at(under, 2, 15).alpha(), 128) << "left of the shadow";
  EXPECT_NEAR(at(under, 20, 15).alpha(), 191, 1);

  view_->setInnerShadowColor(QColor());
  EXPECT_EQ(at(paint(), 20, 15).alpha(), 128);
}

TEST_P(KVViewTest, InnerShadowBlursInPoints) {
  view_->setBackgroundColor(QColor(255, 0, 0, 0));
  view_->setBorderColor(Qt::blue);
  view_->setBorderWidth(40);
  view_->resize(100, 60);
  view_->setInnerShadowColor(Qt::black);
  view_->setInnerShadowSize({20, 0});
  view_->setInnerShadowBlur(8);
  const QImage image = paint();
  // Across the border's inner edge, moved to x = 40: the integral of a Gaussian, deviation 4.
  for (double x = 36; x < 50; x += 2) {
    const double center = x + 0.5 / GetParam();
    const double expected = 255 * 0.5 * std::erfc((center - 40) / 4 / std::sqrt(2.0));
    EXPECT_NEAR(at(image, x, 30).alpha(), expected, 4) << x;
  }
}

TEST_P(KVViewTest, DropShadowSurroundsView) {
  QWidget parent;
  parent.resize(100, 80);
  view_->setParent(&parent);
  view_->move(30, 20);
  view_->setBackgroundColor(Qt::red);
  EXPECT_EQ(painted(parent, GetParam()).pixelColor(int(75 * GetParam()), int(30 * GetParam())),
            QColor(Qt::transparent));
  view_->setShadowColor(Qt::blue);
  view_->setShadowSize({10, -6});
  const QImage image = painted(parent, GetParam());
  const struct {
    double x, y;
    QColor color;
  } points[] = {{30, 20, Qt::red},         {69.5, 49.5, Qt::red},     {70, 26, Qt::blue},
                {79.5, 55.5, Qt::blue},    {80, 40, Qt::transparent}, {40, 55.5, Qt::blue},
                {60, 56, Qt::transparent}, {70, 25, Qt::transparent}, {39, 52, Qt::transparent}};
  for (const auto& [x, y, color] : points) EXPECT_EQ(at(image, x, y), color) << x << " " << y;

  view_->setShadowBlur(8);
  const QImage blurred = painted(parent, GetParam());
  EXPECT_NEAR(at(blurred, 79.5, 40).alpha(), 128, 16);
  EXPECT_NEAR(at(blurred, 85, 40).alpha(), 23, 10);
  view_->setParent(nullptr);
}

INSTANTIATE_TEST_SUITE_P(PixelsPerPoint, KVViewTest, testing::Values(1.0, 2.0));

TEST(KVViewPropertiesTest, UpdatesDropShadow) {
  const std::unique_ptr<KVView> view(KVView::initWithCoder(nullptr));
  const ShadowRef shadow = view->dropShadow();
  ASSERT_TRUE(shadow);
  view->setShadowSize({0, -3});
  EXPECT_EQ(shadow->offset(), QSizeF(0, -3));
  view->setShadowBlur(5);
  EXPECT_EQ(shadow->blurRadius(), 5);
  view->setShadowColor(Qt::red);
  EXPECT_EQ(shadow->color(), QColor(Qt::red));
  view->setInnerShadowSize({7, 7});
  view->setInnerShadowBlur(7);
  EXPECT_EQ(shadow->offset(), QSizeF(0, -3));
  EXPECT_EQ(shadow->blurRadius(), 5);

  KVView plain;
  EXPECT_FALSE(plain.dropShadow());
  plain.setShadowSize({1, 1});
  EXPECT_EQ(plain.shadowSize(), QPointF(1, 1));
}

TEST(KVViewPropertiesTest, SettersDoNotRequestRepaint) {
  class Painted : public KVView {
   public:
    int count = 0;

   protected:
    void paintEvent(QPaintEvent* event) override {
      ++count;
      KVView::paintEvent(event);
    }
  };
  Painted view;
  view.resize(20, 20);
  view.show();
  QCoreApplication::processEvents();
  ASSERT_GT(view.count, 0);
  view.count = 0;
  view.setBackgroundColor(Qt::red);
  view.setBorderColor(Qt::red);
  view.setBorderWidth(3);
  view.setShadowColor(Qt::red);
  view.setInnerShadowColor(Qt::red);
  QCoreApplication::processEvents();
  EXPECT_EQ(view.count, 0);
}

TEST(KVViewPropertiesTest, ToleratesExtremeValues) {
  const std::unique_ptr<KVView> view(KVView::initWithCoder(nullptr));
  view->setInnerShadowColor(Qt::black);
  view->setBorderColor(Qt::black);
  for (const double each : {1e12, -1e12, double(qInf()), double(qQNaN())}) {
    view->setInnerShadowBlur(each);
    view->setInnerShadowSize({each, each});
    view->setBorderWidth(each);
    for (const QSize& size : {QSize(20, 20), QSize(0, 0), QSize(1, 900)}) {
      view->resize(size);
      if (!size.isEmpty()) painted(*view, 2);
    }
  }
}

TEST(KVViewPropertiesTest, IsExported) {
  const ClassInfo* const info = ClassInfo::find(text("KVView"));
  ASSERT_TRUE(info);
  const ObjectRef made = info->create(text("initWithCoder:"), {QVariant()});
  ASSERT_TRUE(made);
  EXPECT_TRUE(made->setValueForKey(QColor(Qt::red), text("backgroundColor")));
  EXPECT_TRUE(made->setValueForKey(QPointF(0, -3), text("shadowSize")));
  EXPECT_EQ(made->valueForKey(text("backgroundColor")), QVariant(QColor(Qt::red)));
  EXPECT_FALSE(made->valueForKey(text("borderColor")).isValid());
  EXPECT_EQ(made->valueForKeyPath(text("dropShadow.shadowOffset")), QVariant(QSizeF(0, -3)));
  EXPECT_EQ(info->call(*made, text("isOpaque")), QVariant(false));
  EXPECT_FALSE(info->create(text("init"))->valueForKey(text("dropShadow")).isValid());
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  delete std::static_pointer_cast<View>(made)->widget();
  EXPECT_FALSE(made->valueForKey(text("backgroundColor")).isValid()) << "the widget was deleted";
}

}  // namespace
}  // namespace kelvar
