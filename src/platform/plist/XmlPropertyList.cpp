#include <QDateTime>
#include <QRegularExpression>
#include <QXmlStreamReader>
#include <QXmlStreamWriter>
#include <charconv>
#include <cmath>
#include <optional>

#include "platform/QtError.h"
#include "platform/plist/PropertyList.h"
#include "platform/plist/PropertyListForms.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;

/// The fewest digits that read back to the same number, whatever the locale.
QString realText(double value) {
  if (std::isnan(value)) return u"nan"_s;
  if (std::isinf(value)) return value > 0 ? u"+infinity"_s : u"-infinity"_s;
  char digits[32];
  const auto end = std::to_chars(std::begin(digits), std::end(digits), value).ptr;
  return QString::fromLatin1(digits, end - digits);
}

class XmlWriter {
 public:
  Result<QByteArray> write(const QVariant& root) {
    xml_.setAutoFormatting(true);
    xml_.setAutoFormattingIndent(-1);
    xml_.writeStartDocument();
    xml_.writeDTD(
        u"<!DOCTYPE plist PUBLIC \"-//Apple//DTD PLIST 1.0//EN\" "
        "\"http://www.apple.com/DTDs/PropertyList-1.0.dtd\">"_s);
    xml_.writeStartElement(u"plist"_s);
    xml_.writeAttribute(u"version"_s, u"1.0"_s);
    writeValue(root);
    xml_.writeEndDocument();
    if (error_) return tl::unexpected(*error_);
    return out_;
  }

 private:
  void fail(const QString& why) { error_ = failure(Error::Kind::Unsupported, why).value(); }

  void writeValue(const QVariant& value) {
    switch (value.typeId()) {
      case QMetaType::Bool:
        return xml_.writeEmptyElement(value.toBool() ? u"true"_s : u"false"_s);
      case QMetaType::Float:
      case QMetaType::Double:
        return xml_.writeTextElement(u"real"_s, realText(value.toDouble()));
      case QMetaType::QString:
        return writeText(u"string"_s, value.toString());
      case QMetaType::QByteArray:
        return xml_.writeTextElement(u"data"_s,
                                     QString::fromLatin1(value.toByteArray().toBase64()));
      case QMetaType::QDateTime:
        return writeDate(value.toDateTime());
      case QMetaType::QVariantMap:
        return writeMap(value.toMap());
      case QMetaType::QVariantList:
      case QMetaType::QStringList:
        return writeList(value.toList());
      default:
        return xml_.writeTextElement(u"integer"_s, value.toString());
    }
  }

  void writeMap(const QVariantMap& map) {
    xml_.writeStartElement(u"dict"_s);
    for (auto i = map.begin(); i != map.end(); ++i) {
      writeText(u"key"_s, i.key());
      writeValue(i.value());
    }
    xml_.writeEndElement();
  }

  void writeList(const QVariantList& list) {
    xml_.writeStartElement(u"array"_s);
    for (const QVariant& element : list) writeValue(element);
    xml_.writeEndElement();
  }

  /// Carriage returns are written as references: parsers turn bare ones into line feeds.
  void writeText(const QString& element, const QString& text) {
    for (const QChar c : text) {
      const char16_t unit = c.unicode();
      const bool allowed = unit >= 0x20 || unit == '\t' || unit == '\n' || unit == '\r';
      if (allowed && unit < 0xfffe) continue;
      return fail(u"XML cannot hold the character U+%1, which is in a string"_s.arg(
          uint(unit), 4, 16, QLatin1Char('0')));
    }
    xml_.writeStartElement(element);
    const QStringList parts = text.split(u'\r');
    for (qsizetype i = 0; i < parts.size(); ++i) {
      if (i > 0) xml_.writeEntityReference(u"#13"_s);
      if (!parts[i].isEmpty()) xml_.writeCharacters(parts[i]);
    }
    xml_.writeEndElement();
  }

  void writeDate(const QDateTime& date) {
    const QDateTime utc = date.toUTC();
    const int year = utc.date().year();
    if (year < 1 || year > 9999) {
      return fail(u"XML property lists have no dates outside the years 1 to 9999"_s);
    }
    xml_.writeTextElement(u"date"_s, utc.toString(u"yyyy-MM-dd'T'HH:mm:ss'Z'"_s));
  }

  QByteArray out_;
  QXmlStreamWriter xml_{&out_};
  std::optional<Error> error_;
};

class XmlReader {
 public:
  explicit XmlReader(const QString& text) : xml_(text) { xml_.setNamespaceProcessing(false); }

  Result<QVariant> read() {
    const QVariant root = readRoot();
    if (!xml_.hasError()) return root;
    return failure(Error::Kind::Damaged,
                   u"line %1: %2"_s.arg(xml_.lineNumber()).arg(xml_.errorString()));
  }

 private:
  QVariant readRoot() {
    while (!xml_.atEnd() && !xml_.isStartElement()) xml_.readNext();
    if (xml_.name() != u"plist") return fail(u"its outermost element is not <plist>"_s);
    if (!nextElement()) return fail(u"<plist> is empty"_s);
    const QVariant root = readValue(0);
    if (nextElement()) fail(u"<plist> has more than one value"_s);
    while (!xml_.atEnd()) xml_.readNext();
    return root;
  }

  QVariant fail(const QString& why) {
    if (!xml_.hasError()) xml_.raiseError(why);
    return {};
  }

  /// Moves to the start of the next element; false at the end of the enclosing one. Between
  /// elements only white space and comments are allowed.
  bool nextElement() {
    while (!xml_.atEnd()) {
      xml_.readNext();
      if (xml_.isStartElement()) return true;
      if (xml_.isEndElement()) return false;
      if (xml_.isCharacters() && !xml_.isWhitespace()) fail(u"there is text between elements"_s);
      if (xml_.isEntityReference()) fail(u"there is an unknown entity"_s);
    }
    return false;
  }

  QVariant readValue(int depth) {
    if (++count_ > PropertyList::kMaxValues) {
      return fail(u"it has more than %1 values"_s.arg(PropertyList::kMaxValues));
    }
    const QString name = xml_.name().toString();
    if (name == u"dict" || name == u"array") {
      if (depth == PropertyList::kMaxDepth) {
        return fail(u"it is nested more than %1 deep"_s.arg(PropertyList::kMaxDepth));
      }
      return name == u"dict" ? readMap(depth) : readList(depth);
    }
    return readScalar(name, readText());
  }

  /// The text of the current element; empty, not null, when it has none.
  QString readText() {
    const QString text = xml_.readElementText();
    return text.isNull() ? u""_s : text;
  }

  QVariant readMap(int depth) {
    QVariantMap map;
    while (nextElement()) {
      if (xml_.name() != u"key") return fail(u"a <key> is missing"_s);
      const QString key = readText();
      if (!nextElement()) return fail(u"the value of the key \"%1\" is missing"_s.arg(key));
      map.insert(key, readValue(depth + 1));
    }
    return map;
  }

  QVariant readList(int depth) {
    QVariantList list;
    while (nextElement()) list.append(readValue(depth + 1));
    return list;
  }

  QVariant readScalar(const QString& name, const QString& text) {
    if (name == u"string") return text;
    if (name == u"true" || name == u"false") {
      return text.isEmpty() ? QVariant(name == u"true") : fail(u"<%1> has a text"_s.arg(name));
    }
    QVariant value;
    if (name == u"integer") value = readInteger(text.trimmed());
    if (name == u"real") value = readReal(text.trimmed().toLatin1());
    if (name == u"date") value = readDate(text.trimmed());
    if (name == u"data") value = readData(text);
    return value.isValid() ? value : fail(u"<%1> cannot be read"_s.arg(name));
  }

  /// Decimal, or hexadecimal after 0x.
  static QVariant readInteger(QString text) {
    const bool negative = text.startsWith(u'-');
    if (negative || text.startsWith(u'+')) text.remove(0, 1);
    const bool hexadecimal = text.startsWith(u"0x", Qt::CaseInsensitive);
    const QByteArray digits = text.sliced(hexadecimal ? 2 : 0).toLatin1();
    uint64_t size = 0;
    const auto [end, error] =
        std::from_chars(digits.begin(), digits.end(), size, hexadecimal ? 16 : 10);
    constexpr uint64_t kMaxSigned = INT64_MAX;
    if (error != std::errc() || end != digits.end() || (negative && size > kMaxSigned + 1))
      return {};
    if (negative) return qlonglong(0 - size);
    return size > kMaxSigned ? QVariant(qulonglong(size)) : QVariant(qlonglong(size));
  }

  static QVariant readReal(QByteArray text) {
    if (text.startsWith('+')) text.remove(0, 1);
    double value = 0;
    const auto [end, error] = std::from_chars(text.begin(), text.end(), value);
    return error == std::errc() && end == text.end() ? QVariant(value) : QVariant();
  }

  static QVariant readDate(const QString& text) {
    QDateTime date = QDateTime::fromString(text, u"yyyy-MM-dd'T'HH:mm:ss'Z'"_s);
    date.setTimeSpec(Qt::UTC);
    return date.isValid() ? QVariant(date) : QVariant();
  }

  static QVariant readData(const QString& text) {
    const auto result = QByteArray::fromBase64Encoding(text.simplified().remove(u' ').toLatin1(),
                                                       QByteArray::AbortOnBase64DecodingErrors);
    return result ? QVariant(result.decoded) : QVariant();
  }

  QXmlStreamReader xml_;
  qsizetype count_ = 0;
};

}  // namespace

Result<QByteArray> writeXmlPropertyList(const QVariant& value) { return XmlWriter().write(value); }

Result<QVariant> readXmlPropertyList(const QString& text) {
  // Entities that expand to others can keep a parser busy forever, and no property list has any.
  static const QRegularExpression kDeclarations(uR"(<!DOCTYPE(?>[^>"'\[]|"[^"]*"|'[^']*')*+\[)"_s);
  if (text.contains(kDeclarations)) {
    return failure(Error::Kind::Unsupported, u"it declares XML entities of its own"_s);
  }
  return XmlReader(text).read();
}

}  // namespace kelvar
