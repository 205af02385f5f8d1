#include <gtest/gtest.h>

#include <QDateTime>
#include <QFile>
#include <QTemporaryDir>
#include <cstdlib>

#include "platform/Values.h"
#include "platform/plist/Json.h"
#include "platform/plist/PropertyList.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;
using Format = PropertyList::Format;

/// Python's plistlib, an independent implementation. `typed` describes a value in JSON with its
/// types; `build` is the inverse.
constexpr const char* kScript = R"(
import base64, datetime, json, math, plistlib, sys

def typed(v):
    if isinstance(v, bool): return ["bool", str(v).lower()]
    if isinstance(v, int): return ["integer", str(v)]
    if isinstance(v, float): return ["real", "nan" if math.isnan(v) else v.hex()]
    if isinstance(v, str): return ["string", v]
    if isinstance(v, bytes): return ["data", base64.b64encode(v).decode()]
    if isinstance(v, datetime.datetime): return ["date", v.isoformat(timespec="milliseconds")]
    if isinstance(v, dict): return ["dict", {k: typed(e) for k, e in v.items()}]
    if isinstance(v, list): return ["array", [typed(e) for e in v]]
    raise TypeError(type(v))

def build(t):
    kind, v = t
    if kind == "bool": return v == "true"
    if kind == "integer": return int(v)
    if kind == "real": return float.fromhex(v)
    if kind == "data": return base64.b64decode(v)
    if kind == "date": return datetime.datetime.fromisoformat(v)
    if kind == "dict": return {k: build(e) for k, e in v.items()}
    if kind == "array": return [build(e) for e in v]
    return v

command, source, target = sys.argv[1:]
if command == "read":
    with open(source, "rb") as f: value = plistlib.load(f)
    with open(target, "w") as f: json.dump(typed(value), f)
else:
    with open(source) as f: value = build(json.load(f))
    fmt = plistlib.FMT_XML if command == "xml" else plistlib.FMT_BINARY
    with open(target, "wb") as f: plistlib.dump(value, f, fmt=fmt)
)";

QString realText(double value) {
  char text[64];
  std::snprintf(text, sizeof text, "%a", value);
  return std::isnan(value) ? u"nan"_s : QString::fromLatin1(text);
}

/// What the script's `typed` returns for the same value, apart from the notation of reals.
QVariant typed(const QVariant& value) {
  const auto pair = [](const QString& kind, const QVariant& of) { return QVariantList{kind, of}; };
  switch (value.typeId()) {
    case QMetaType::Bool:
      return pair(u"bool"_s, value.toString());
    case QMetaType::Double:
    case QMetaType::Float:
      return pair(u"real"_s, realText(value.toDouble()));
    case QMetaType::QString:
      return pair(u"string"_s, value);
    case QMetaType::QByteArray:
      return pair(u"data"_s, QString::fromLatin1(value.toByteArray().toBase64()));
    case QMetaType::QDateTime:
      return pair(u"date"_s, value.toDateTime().toString(u"yyyy-MM-ddTHH:mm:ss.zzz"_s));
    case QMetaType::QVariantMap: {
      QVariantMap map = value.toMap();
      for (QVariant& each : map) each = typed(each);
      return pair(u"dict"_s, map);
    }
    case QMetaType::QVariantList: {
      QVariantList list = value.toList();
      for (QVariant& each : list) each = typed(each);
      return pair(u"array"_s, list);
    }
    default:
      return pair(u"integer"_s, value.toString());
  }
}

/// Normalizes the notation of reals to that of `typed` here.
QVariant respelled(const QVariant& value) {
  QVariantList list = value.toList();
  if (list.size() == 2 && list[0] == u"real"_s) {
    return QVariantList{list[0], realText(std::strtod(qPrintable(list[1].toString()), nullptr))};
  }
  if (value.typeId() == QMetaType::QVariantMap) {
    QVariantMap map = value.toMap();
    for (QVariant& each : map) each = respelled(each);
    return map;
  }
  if (value.typeId() != QMetaType::QVariantList) return value;
  for (QVariant& each : list) each = respelled(each);
  return list;
}

QDateTime utc(qint64 milliseconds) { return QDateTime::fromMSecsSinceEpoch(milliseconds, Qt::UTC); }

class PlistlibTest : public testing::Test {
 protected:
  void SetUp() override {
    if (std::system("python3 -c 'import plistlib' 2>/dev/null") != 0) GTEST_SKIP() << "no python3";
    write("plists.py", kScript);
  }

  QString path(const char* name) const { return dir_.filePath(QString::fromLatin1(name)); }

  QByteArray bytes(const char* name) const {
    QFile file(path(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }

  void write(const char* name, const QByteArray& data) const {
    QFile file(path(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly) && file.write(data) == data.size());
  }

  void python(const std::string& arguments) const {
    const std::string line =
        "cd '" + dir_.path().toStdString() + "' && python3 plists.py " + arguments;
    ASSERT_EQ(std::system(line.c_str()), 0) << arguments;
  }

  QVariant json(const char* name) const { return Json::read(bytes(name)).value(); }

  QTemporaryDir dir_;
};

TEST_F(PlistlibTest, ReadsOurFilesAndWritesOurs) {
  const QVariantMap values{
      {u"true"_s, true},
      {u"false"_s, false},
      {u"integers"_s, QVariantList{qlonglong(0), qlonglong(1), qlonglong(-1), qlonglong(255),
                                   qlonglong(65536), qlonglong(1) << 32, qlonglong(INT32_MIN),
                                   qlonglong(INT64_MIN), qlonglong(INT64_MAX), ~qulonglong(0)}},
      {u"reals"_s, QVariantList{-0.0, 1.0, 0.1, -1e300, 5e-324, double(INFINITY), double(NAN)}},
      {u"strings"_s, QVariantList{u""_s, u" <&>\"' \t\n"_s, u"é😀"_s, QString(300, u'x')}},
      {u"returns"_s, u"\r \r\n"_s},
      {u"data"_s, QVariantList{QByteArray(""), QByteArray("\0\xff\1", 3), QByteArray(1000, 'b')}},
      {u"dates"_s, QVariantList{utc(0), utc(-14182980000), utc(4102444800000), utc(-59011459200000),
                                utc(253402300799000)}},
      {u"ké.y <&>"_s, QVariantList{QVariantList(), QVariantMap(), QVariantMap{{u""_s, u""_s}}}}};
  QVariantMap fractions = values;
  fractions.insert(u"fraction"_s, utc(-250));
  const struct {
    Format format;
    const char* name;
    QVariantMap values;
    QString lost;  // Python writes line feeds for them.
  } cases[] = {{Format::Xml, "xml", values, u"returns"_s},
               {Format::Binary, "binary", fractions, {}}};
  for (const auto& [format, name, written, lost] : cases) {
    write("ours", PropertyList::write(written, format).value());
    python("read ours ours.json");
    EXPECT_TRUE(identical(respelled(json("ours.json")), typed(written))) << name;

    write("typed.json", Json::write(typed(written)).value());
    python(std::string(name) + " typed.json theirs");
    auto found = Format::OpenStep;
    const QVariantMap read = PropertyList::read(bytes("theirs"), &found)->toMap();
    EXPECT_EQ(read.keys(), written.keys());
    for (auto i = written.begin(); i != written.end(); ++i) {
      if (i.key() == lost) continue;
      EXPECT_TRUE(identical(read.value(i.key()), i.value())) << name << i.key().toStdString();
    }
    EXPECT_EQ(found, format);
  }
}

}  // namespace
}  // namespace kelvar
