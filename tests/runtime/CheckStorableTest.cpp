#include <gtest/gtest.h>

#include "runtime/ClassInfo.h"
#include "runtime/checkStorable.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;

TEST(CheckStorableTest, NamesKeyAndPlace) {
  const QVariant object = toVariant(std::make_shared<Object>());
  const QVariant nil = QVariant::fromValue(nullptr);
  const std::pair<QVariant, const char*> cases[] = {
      {5, ""},
      {QVariantMap{{u"a"_s, QVariantList{1.5, u"b"_s, QByteArray("c"), false}}}, ""},
      {std::nan(""), ""},
      {QVariant(), ""},
      {object, "it is an object of class NSObject"},
      {nil, "it is nil"},
      {QVariantList{1, nil}, "[1] is nil"},
      {QVariantMap{{u"list"_s, QVariantList{0, QVariantMap{{u"x"_s, object}}}}},
       "list[1].x is an object of class NSObject"},
      {QVariantMap{{u"a"_s, QString(QChar(0xD800))}}, "a is text that is not valid Unicode"},
      {QVariantMap{{u"a"_s, QPointF(1, 2)}}, "a is no property-list value"},
  };
  for (const auto& [value, problem] : cases) {
    const Result<void> checked = checkStorable(value, u"a.b"_s);
    EXPECT_EQ(checked ? std::string() : checked.error().message,
              *problem ? std::string("the value for a.b cannot be stored: ") + problem : "");
  }
  QVariant deep = 1;
  for (int i = 0; i < 2000; ++i) deep = QVariantList{deep};
  EXPECT_EQ(checkStorable(deep, u"k"_s).error().message,
            "the value for k cannot be stored: it is nested too deeply");
  EXPECT_FALSE(checkStorable(1, QString()));
}

}  // namespace
}  // namespace kelvar
