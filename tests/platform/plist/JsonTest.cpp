#include "platform/plist/Json.h"

#include <gtest/gtest.h>

#include <QDateTime>
#include <QPoint>
#include <climits>
#include <cmath>

#include "platform/Values.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;

TEST(JsonTest, KeepsEveryValueType) {
  const QVariant null = QVariant::fromValue(nullptr);
  const struct {
    QVariant value;
    QByteArray text;
  } cases[] = {
      {null, "null"},
      {true, "true"},
      {qlonglong(1), "1"},
      {1.0, "1.0"},
      {-0.0, "-0.0"},
      {qlonglong(-1), "-1"},
      {qlonglong(LLONG_MIN), "-9223372036854775808"},
      {qlonglong(LLONG_MAX), "9223372036854775807"},
      {qlonglong(9007199254740993), "9007199254740993"},
      {~qulonglong(0), "18446744073709551615"},
      {0.1, "0.1"},
      {5e-324, "5e-324"},
      {1e300, "1e+300"},
      {u""_s, "\"\""},
      {QString(QChar(0)) + u"\u0001\"\\/\n\u007fé😀\u2028"_s,
       "\"\\u0000\\u0001\\\"\\\\/\\n\x7f\xc3\xa9\xf0\x9f\x98\x80\xe2\x80\xa8\""},
      {QVariantList(), "[]"},
      {QVariantMap(), "{}"},
      {QVariantMap{{u"a"_s, QVariantList{null, false, qlonglong(0), 0.0}}, {u""_s, u"b"_s}},
       "{\"\":\"b\",\"a\":[null,false,0,0.0]}"},
      {nested(Json::kMaxDepth),
       QByteArray(Json::kMaxDepth, '[') + QByteArray(Json::kMaxDepth, ']')},
  };
  for (const auto& [value, text] : cases) {
    EXPECT_EQ(Json::write(value).value(), text);
    EXPECT_TRUE(identical(Json::read(text).value(), value)) << text.constData();
    const QByteArray indented = Json::write(value, Json::Layout::Indented).value();
    EXPECT_TRUE(identical(Json::read(indented).value(), value)) << indented.constData();
  }
}

TEST(JsonTest, NotationDeterminesNumberType) {
  const struct {
    QByteArray text;
    QVariant value;
  } cases[] = {
      {"-0", qlonglong(0)},
      {"1e0", 1.0},
      {"1E2", 100.0},
      {"18446744073709551616", 0x1p64},
      {"-9223372036854775809", -0x1p63},
      {" [1, 1.0]\n", QVariantList{qlonglong(1), 1.0}},
      {"{\"a\":1,\"a\":2}", QVariantMap{{u"a"_s, qlonglong(2)}}},
      {"\"\\ud83d\\ude00\"", u"😀"_s},
  };
  for (const auto& [text, value] : cases) {
    EXPECT_TRUE(identical(Json::read(text).value(), value)) << text.constData();
  }
}

TEST(JsonTest, ReportsMalformedInput) {
  const QByteArray texts[] = {
      "",
      " ",
      "{",
      "[1,]",
      "{\"a\"}",
      "{a:1}",
      "01",
      "1.",
      ".5",
      "+1",
      "nul",
      "1 2",
      "\"\n\"",
      "\"\\x\"",
      "\"\xff\"",
      "\"\xed\xa0\x80\"",
      "\"\\ud800\"",
      "1e999",
      "NaN",
      "// c\n1",
      QByteArray(100000, '['),
      QByteArray("{\"a\":").repeated(100000),
      QByteArray(Json::kMaxDepth + 1, '[') + QByteArray(Json::kMaxDepth + 1, ']'),
      "[" + QByteArray("1,").repeated(Json::kMaxValues) + "1]",
      QByteArray(Json::kMaxBytes + 1, ' ')};
  for (const QByteArray& text : texts) {
    const Result<QVariant> value = Json::read(text);
    ASSERT_FALSE(value) << text.left(50).constData();
    EXPECT_FALSE(value.error().message.empty()) << text.left(50).constData();
  }
}

TEST(JsonTest, RejectsValuesThatJsonCannotHold) {
  const QVariant values[] = {{},
                             QString(),
                             QString(QChar(0xd800)),
                             QByteArray("b"),
                             QDateTime::currentDateTime(),
                             double(INFINITY),
                             double(NAN),
                             QPoint(1, 2),
                             nested(Json::kMaxDepth)};
  for (const QVariant& value : values) {
    const Result<QByteArray> text = Json::write(QVariantList{value});
    ASSERT_FALSE(text) << value.typeName();
    EXPECT_FALSE(text.error().message.empty()) << value.typeName();
    EXPECT_FALSE(Json::isValidObject(QVariantMap{{u"k"_s, value}})) << value.typeName();
  }
  EXPECT_TRUE(Json::isValidObject(QVariantMap{{u"k"_s, QVariant::fromValue(nullptr)}}));
  EXPECT_TRUE(Json::isValidObject(QVariantList()));
  EXPECT_FALSE(Json::isValidObject(u"text"_s)) << "neither a map nor a list";
  EXPECT_FALSE(Json::isValidObject(QVariant()));
}

}  // namespace
}  // namespace kelvar
