#include "platform/plist/PropertyList.h"

#include <gtest/gtest.h>

#include <QPoint>
#include <QTimeZone>
#include <cfloat>
#include <climits>
#include <clocale>

#include "platform/Values.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;
using Format = PropertyList::Format;

QDateTime utc(qint64 milliseconds) { return QDateTime::fromMSecsSinceEpoch(milliseconds, Qt::UTC); }

QVariant read(const QByteArray& bytes, Format* found = nullptr) {
  const Result<QVariant> value = PropertyList::read(bytes, found);
  EXPECT_TRUE(!value || value->isValid()) << bytes.left(80).constData();
  return value.value_or(QVariant());
}

QByteArray xml(const QByteArray& inner) { return "<plist version=\"1.0\">" + inner + "</plist>"; }

TEST(PropertyListTest, KeepsEveryTypeInXmlAndBinary) {
  const qlonglong least = LLONG_MIN;
  const QVariantList values = {
      true,
      false,
      qlonglong(0),
      qlonglong(1),
      qlonglong(-1),
      qlonglong(255),
      qlonglong(256),
      qlonglong(65535),
      qlonglong(65536),
      qlonglong(UINT_MAX),
      qlonglong(UINT_MAX) + 1,
      qlonglong(INT_MIN),
      qlonglong(LLONG_MAX),
      least,
      qulonglong(LLONG_MAX) + 1,
      ~qulonglong(0),
      0.0,
      -0.0,
      1.0,
      0.1,
      1.0 / 3,
      -1.5e300,
      5e-324,
      DBL_MAX,
      double(INFINITY),
      double(-INFINITY),
      double(NAN),
      u""_s,
      u"a"_s,
      u" <&>\"' \t\n\r\r\n "_s,
      u"é😀\u2028\u0080\ufffd"_s,
      QString(14, u'x'),
      QString(15, u'x'),
      QString(300, u'x'),
      QString(300, u'é'),
      QByteArray(""),
      QByteArray("\0\xff", 2),
      QByteArray(70000, 'b'),
      utc(0),
      utc(-1000),
      utc(-62135596800000),
      utc(253402300799000),
      utc(4102444800000),
      utc(978307200000),
      QVariantList(),
      QVariantList(15, true),
      QVariantMap(),
      QVariantList{QVariantList{QVariantMap{{u"k"_s, QVariantList{1.0, true, qlonglong(1)}}}}},
      QVariantMap{{u""_s, u""_s}, {u"a.b\r\n<"_s, qlonglong(1)}, {u"é"_s, false}},
      nested(PropertyList::kMaxDepth)};
  for (const Format format : {Format::Xml, Format::Binary}) {
    for (const QVariant& value : values) {
      const QByteArray bytes = PropertyList::write(value, format).value();
      auto found = Format::OpenStep;
      const QVariant back = read(bytes, &found);
      EXPECT_TRUE(identical(back, value)) << bytes.left(300).constData();
      EXPECT_EQ(found, format);
    }
    const QVariantList all = values.first(values.size() - 1);  // The last is as deep as can be.
    EXPECT_TRUE(identical(read(PropertyList::write(all, format).value()), all));
  }
}

TEST(PropertyListTest, KeepsInBinaryWhatXmlCannot) {
  for (const QVariant& value : QVariantList{u"\u0001\u001b[31m"_s, QString(QChar(0)) + u"nul"_s,
                                            u"\uffff"_s, utc(-62135596801000), utc(253402300800000),
                                            QVariantMap{{QString(QChar(0)), true}}}) {
    const QByteArray bytes = PropertyList::write(value, Format::Binary).value();
    EXPECT_TRUE(identical(read(bytes), value)) << value.toString().toStdString();
    const Result<QByteArray> text = PropertyList::write(QVariantList{value}, Format::Xml);
    ASSERT_FALSE(text);
    EXPECT_EQ(text.error().kind, Error::Kind::Unsupported);
  }
  const auto written = [](const QVariant& value, Format format) {
    return read(PropertyList::write(value, format).value());
  };
  EXPECT_TRUE(identical(written(0.1f, Format::Binary), 0.1f));
  EXPECT_TRUE(identical(written(0.1f, Format::Xml), double(0.1f)));
  EXPECT_TRUE(identical(written(utc(-1), Format::Binary), utc(-1)));
  EXPECT_TRUE(identical(written(utc(-1), Format::Xml), utc(-1000))) << "the second it is in";
}

TEST(PropertyListTest, AcceptsShorterTypesAndTimeZones) {
  const QDateTime tokyo(QDate(2026, 1, 1), QTime(8, 0), QTimeZone(9 * 3600));
  const struct {
    QVariant value;
    QVariant back;
  } cases[] = {{-5, qlonglong(-5)},
               {5u, qlonglong(5)},
               {QVariant::fromValue(short(-3)), qlonglong(-3)},
               {QStringList{u"a"_s}, QVariantList{u"a"_s}},
               {tokyo, tokyo.toUTC()}};
  for (const auto& [value, back] : cases) {
    for (const Format format : {Format::Xml, Format::Binary}) {
      EXPECT_TRUE(identical(read(PropertyList::write(value, format).value()), back))
          << value.typeName();
    }
  }
}

TEST(PropertyListTest, RejectsValuesThatPropertyListsCannotHold) {
  const QVariant others[] = {{},
                             QVariant::fromValue(nullptr),
                             QString(),
                             QString(QChar(0xd800)),
                             QDateTime(),
                             QVariant::fromValue(QPoint(1, 2)),
                             QVariantList{true, QVariant()},
                             QVariantMap{{u"k"_s, QVariantList{QVariant::fromValue(nullptr)}}},
                             QVariantMap{{QString(QChar(0xdc00)), true}},
                             nested(PropertyList::kMaxDepth + 1)};
  for (const QVariant& value : others) {
    EXPECT_FALSE(PropertyList::isPropertyList(value)) << value.typeName();
    for (const Format format : {Format::Xml, Format::Binary}) {
      EXPECT_FALSE(PropertyList::write(value, format));
    }
  }
  EXPECT_FALSE(PropertyList::write(u"text"_s, Format::OpenStep));
}

TEST(PropertyListTest, ReadsXmlVariantsOfOtherWriters) {
  const struct {
    QByteArray bytes;
    QVariant value;
  } cases[] = {
      {"\xef\xbb\xbf \n" + xml("<true/>"), true},
      {"<!-- c --><?x?>" + xml("<!-- <false/> --><true></true>"), true},
      {xml("<string>a<![CDATA[<b>]]>&#x1F600;&amp;</string>"), u"a<b>😀&"_s},
      {xml("<string>a\r\nb\rc&#13;</string>"), u"a\nb\nc\r"_s},
      {xml("<integer> +7 </integer>"), qlonglong(7)},
      {xml("<integer>-0x10</integer>"), qlonglong(-16)},
      {xml("<integer>0xFFFFFFFFFFFFFFFF</integer>"), ~qulonglong(0)},
      {xml("<integer>-9223372036854775808</integer>"), qlonglong(LLONG_MIN)},
      {xml("<real>+1e3</real>"), 1000.0},
      {xml("<real>7</real>"), 7.0},
      {xml("<data>\n\tAA\n\tE=\n</data>"), QByteArray("\0\1", 2)},
      {xml("<dict><key>k</key><true/><key>k</key><false/></dict>"), QVariantMap{{u"k"_s, false}}},
  };
  for (const auto& [bytes, value] : cases) {
    EXPECT_TRUE(identical(read(bytes), value)) << bytes.constData();
  }
}

TEST(PropertyListTest, ReadsRealsInEveryLocale) {
  const char* const former = std::setlocale(LC_NUMERIC, nullptr);
  const std::string kept = former ? former : "C";
  for (const char* locale : {"de_DE.UTF-8", "fr_FR.UTF-8"}) std::setlocale(LC_NUMERIC, locale);
  EXPECT_TRUE(identical(read(xml("<real>1.5</real>")), 1.5));
  EXPECT_TRUE(PropertyList::write(1.5, Format::Xml)->contains("<real>1.5</real>"));
  std::setlocale(LC_NUMERIC, kept.c_str());
}

TEST(PropertyListTest, ReadsOpenStepFormat) {
  const QVariantMap map{{u"a"_s, u"b"_s}, {u"c"_s, u"c"_s}};
  const struct {
    QByteArray bytes;
    QVariant value;
  } cases[] = {
      {"hello", u"hello"_s},
      {" /* c */ com.example/x:y_$-1.5 // end", u"com.example/x:y_$-1.5"_s},
      {"\"a b\"", u"a b"_s},
      {"'it\"s'", u"it\"s"_s},
      {R"("\a\b\f\n\r\t\v\\\"\q\101\7\U00e9\u20aC")", u"\a\b\f\n\r\t\v\\\"qA\aé€"_s},
      {R"("\UD83D\UDE00")", u"😀"_s},
      {"\"\"", u""_s},
      {"<>", QByteArray("")},
      {"<0fA0 \n 1b>", QByteArray("\x0f\xa0\x1b")},
      {"()", QVariantList()},
      {"(a, (b), \"c\",)", QVariantList{u"a"_s, QVariantList{u"b"_s}, u"c"_s}},
      {"{}", QVariantMap()},
      {"{a = b; c;}", map},
      {"a = b;\nc;", map},
      {"\xff\xfe{\0}\0", QVariantMap()},
      {"{\"k\" = {l = (<00>);};}",
       QVariantMap{{u"k"_s, QVariantMap{{u"l"_s, QVariantList{QByteArray("\0", 1)}}}}}},
  };
  for (const auto& [bytes, value] : cases) {
    // A byte order mark has a zero byte after it.
    const QByteArray whole =
        bytes.startsWith("\xff") ? QByteArray("\xff\xfe{\0}\0", 6) : QByteArray(bytes);
    auto found = Format::Xml;
    EXPECT_TRUE(identical(read(whole, &found), value)) << bytes.constData();
    EXPECT_EQ(found, Format::OpenStep);
  }
}

/// A binary list whose elements are references to `objects`; each object's bytes are given.
QByteArray binary(const QList<QByteArray>& objects, quint8 top = 0) {
  QByteArray out("bplist00"), table;
  for (const QByteArray& object : objects) {
    table += char(out.size());
    out += object;
  }
  const char start = char(out.size());
  return out + table + QByteArray(6, 0) + "\x01\x01" + QByteArray(7, 0) + char(objects.size()) +
         QByteArray(7, 0) + char(top) + QByteArray(7, 0) + start;
}

TEST(PropertyListTest, ReadsBinaryVariantsOfOtherWriters) {
  const QByteArray wide = QByteArray("\x14", 1) + QByteArray(8, '\xff') + QByteArray(8, '\xff');
  const struct {
    QByteArray bytes;
    QVariant value;
  } cases[] = {
      {binary({"\x08"}), false},
      {binary({QByteArray("\x11\x00\x05", 3)}), qlonglong(5)},
      {binary({wide}), qlonglong(-1)},
      {binary({QByteArray("\x5f\x10\x01z", 4)}), u"z"_s},
      {binary({"\xa2\x01\x01", "\x09"}), QVariantList{true, true}},
      {binary({"\x09", QByteArray("\xd1\x02\x00", 3), "\x51k"}, 1), QVariantMap{{u"k"_s, true}}},
  };
  for (const auto& [bytes, value] : cases) {
    EXPECT_TRUE(identical(read(bytes), value)) << bytes.toHex().constData();
  }
}

TEST(PropertyListTest, ReportsMalformedInput) {
  QByteArray bomb("<plist>"), deepBinary;
  QList<QByteArray> doubling;
  for (int i = 1; i < 60; ++i) doubling.append(QByteArray("\xa2") + char(i) + char(i));
  doubling.append("\x09");
  const QByteArray entities =
      "<!DOCTYPE plist [<!ENTITY a \"aaaaaaaaaa\"><!ENTITY b \"&a;&a;\">]><plist><string>&b;"
      "</string></plist>";
  const QByteArray hiddenEntities =
      "<!-- <!DOCTYPE> --><!DOCTYPE plist SYSTEM \"a>b\" [<!ENTITY % p \"%p;\">%p;]>" +
      xml("<true/>");
  const QByteArray deep = QByteArray(100000, '(') + QByteArray(100000, ')');
  const QByteArray deepMap = QByteArray("{a=").repeated(100000);
  const QByteArray deepXml =
      xml(QByteArray("<array>").repeated(100000) + QByteArray("</array>").repeated(100000));
  const QByteArray all[] = {"",
                            " ",
                            "two words",
                            "\"open",
                            "'open",
                            "\"open\\",
                            "(a b)",
                            "(a",
                            "(,)",
                            "{a}",
                            "{a = b}",
                            "{a = ;}",
                            "{a = b; } x",
                            "<0>",
                            "<0g>",
                            "<00",
                            "\"\\U\"",
                            "\"\\377\"",
                            "\"\\UD800\"",
                            "a=b",
                            "\xff",
                            "\xff\xff",
                            deep,
                            deepMap,
                            "bplist00",
                            "bplist00 and much more text than a trailer has!!",
                            "<plist>",
                            "<plist/>",
                            "<plist><true/><true/></plist>",
                            "<list><true/></list>",
                            xml("<nothing/>"),
                            xml("<true>x</true>"),
                            xml("<integer/>"),
                            xml("<integer>1.5</integer>"),
                            xml("<integer>18446744073709551616</integer>"),
                            xml("<integer>-9223372036854775809</integer>"),
                            xml("<integer>--1</integer>"),
                            xml("<real>x</real>"),
                            xml("<real>1,5</real>"),
                            xml("<date>yesterday</date>"),
                            xml("<date>2026-02-30T00:00:00Z</date>"),
                            xml("<data>!!!</data>"),
                            xml("<dict><true/></dict>"),
                            xml("<dict><key>k</key></dict>"),
                            xml("<dict><key>k</key><key>l</key></dict>"),
                            xml("<array>text</array>"),
                            xml("<string><b/></string>"),
                            xml("<string>&unknown;</string>"),
                            xml("<string>&#0;</string>"),
                            xml("<string>\xff</string>"),
                            xml("<true/>") + "<x/>",
                            entities,
                            hiddenEntities,
                            deepXml,
                            binary({"\xa1\x00"}),
                            binary({"\xa1\x01", "\xa1\x00"}),
                            binary({"\xa1\x07"}),
                            binary({"\x00"}),
                            binary({"\x1f"}),
                            binary({"\x21\x00\x00"}),
                            binary({"\x13\x01"}),
                            binary({"\x5f"}),
                            binary({"\x5f\x13\x7f\xff\xff\xff\xff\xff\xff\xff"}),
                            binary({"\x5f\x13\xff\xff\xff\xff\xff\xff\xff\xff"}),
                            binary({"\x51\x80"}),
                            binary({QByteArray("\x61\xd8\x00", 3)}),
                            binary({"\x4f\x10\xff"}),
                            binary({QByteArray("\xd1\x01\x01", 3), "\x09"}),
                            binary({"\x33\x7f\xf8\0\0\0\0\0\0"}),
                            binary(doubling),
                            binary({"\x09"}, 7)};
  for (const QByteArray& bytes : all) {
    const Result<QVariant> value = PropertyList::read(bytes);
    ASSERT_FALSE(value) << bytes.left(100).constData() << bytes.right(100).toHex().constData();
    EXPECT_FALSE(value.error().message.empty()) << bytes.left(100).constData();
  }
}

TEST(PropertyListTest, LimitsBinaryDepthThroughSharedObjects) {
  // Each list holds the one before it, written from the inside out, so that no branch is new.
  QByteArray out("bplist00"), table;
  const int levels = PropertyList::kMaxDepth + 1;
  for (int i = 0; i <= levels; ++i) {
    table += char(out.size() >> 8);
    table += char(out.size());
    out += i == 0 ? QByteArray("\xa0")
                  : QByteArray("\xa2") + char((i - 1) >> 8) + char(i - 1) + QByteArray(2, 0);
  }
  const qsizetype start = out.size();
  for (const int top : {PropertyList::kMaxDepth - 1, levels}) {
    QByteArray bytes = out + table + QByteArray(6, 0) + "\x02\x02" + QByteArray(6, 0);
    for (const qsizetype number : {qsizetype(levels + 1), qsizetype(top), start}) {
      if (number != levels + 1) bytes += QByteArray(6, 0);
      bytes += char(number >> 8);
      bytes += char(number);
    }
    EXPECT_EQ(PropertyList::read(bytes).has_value(), top < levels);
  }
}

TEST(PropertyListTest, LimitsNumberOfValues) {
  const qsizetype many = PropertyList::kMaxValues;
  const struct {
    QByteArray bytes;
    std::string named;
  } cases[] = {{"(" + QByteArray("a,").repeated(many) + ")", std::to_string(many)},
               {QByteArray(PropertyList::kMaxBytes + 1, ' '), "64 MiB"}};
  for (const auto& [bytes, named] : cases) {
    const Result<QVariant> value = PropertyList::read(bytes);
    ASSERT_FALSE(value) << named;
    EXPECT_EQ(value.error().kind, Error::Kind::TooLarge) << named;
    EXPECT_NE(value.error().message.find(named), std::string::npos) << value.error().message;
  }
}

TEST(PropertyListTest, CountsSharedTextAtEachReference) {
  const QString text(1 << 20, u'x');  // Written once, however often it stands in the list.
  for (const int mentions : {60, 70}) {
    const QVariantList strings(mentions, text), keys(mentions, QVariantMap{{text, true}});
    for (const QVariantList& list : {strings, keys}) {
      const QByteArray bytes = PropertyList::write(list, Format::Binary).value();
      EXPECT_LT(bytes.size(), text.size() + 1000);
      const Result<QVariant> value = PropertyList::read(bytes);
      EXPECT_EQ(value.has_value(), mentions == 60);
      EXPECT_TRUE(value || value.error().kind == Error::Kind::TooLarge);
    }
  }
}

}  // namespace
}  // namespace kelvar
