#include "scripting/BoxTable.h"

#include <gtest/gtest.h>

#include <QColor>
#include <QUrl>

#include "platform/image/Image.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;

TEST(BoxTableTest, BoxesEqualValuesOnceWhileHeld) {
  const QVariant image =
      QVariant::fromValue(std::make_shared<Image>(QImage(2, 2, QImage::Format_ARGB32)));
  const std::tuple<QVariant, QVariant, bool> cases[] = {
      {QUrl(u"http://a/"_s), QUrl(u"http://a/"_s), true},
      {QUrl(u"http://a/"_s), QUrl(u"http://b/"_s), false},
      {QColor(Qt::red), QColor(255, 0, 0), true},
      {QColor(Qt::red), QColor(Qt::blue), false},
      {image, image, true},
      {image, QVariant::fromValue(std::make_shared<Image>(QImage(2, 2, QImage::Format_ARGB32))),
       false},
  };
  BoxTable table;
  for (const auto& [first, second, isSame] : cases) {
    const ObjectRef box = table.boxFor(first);
    ASSERT_TRUE(box);
    EXPECT_EQ(table.boxFor(second) == box, isSame) << first.typeName();
  }
  EXPECT_FALSE(table.boxFor(5));
  const auto own = Boxed::box(image);
  table.add(own);
  EXPECT_EQ(table.boxFor(image), own);
  std::weak_ptr<Object> released = table.boxFor(QUrl(u"http://c/"_s));
  EXPECT_TRUE(released.expired());
  for (int i = 0; i < 1000; ++i) table.boxFor(QUrl(QStringLiteral("http://%1/").arg(i)));
  EXPECT_TRUE(table.boxFor(QUrl(u"http://c/"_s)));
}

}  // namespace
}  // namespace kelvar
