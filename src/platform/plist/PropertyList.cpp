#include "platform/plist/PropertyList.h"

#include <QDateTime>
#include <QStringDecoder>
#include <algorithm>
#include <cmath>

#include "platform/QtError.h"
#include "platform/plist/PropertyListForms.h"

namespace kelvar {
namespace {

constexpr qint64 kReferenceDate = 978307200000;  // 2001-01-01T00:00:00Z in Unix milliseconds.

bool isString(const QString& text) { return !text.isNull() && text.isValidUtf16(); }

bool isPropertyListAt(const QVariant& value, int depth);

bool isContainer(const QVariant& value, int depth) {
  if (depth == PropertyList::kMaxDepth) return false;
  if (value.typeId() == QMetaType::QVariantMap) {
    const QVariantMap map = value.toMap();
    for (auto i = map.begin(); i != map.end(); ++i) {
      if (!i.key().isValidUtf16() || !isPropertyListAt(i.value(), depth + 1)) return false;
    }
    return true;
  }
  const QVariantList list = value.toList();
  return std::all_of(list.begin(), list.end(), [depth](const QVariant& element) {
    return isPropertyListAt(element, depth + 1);
  });
}

bool isPropertyListAt(const QVariant& value, int depth) {
  switch (value.typeId()) {
    case QMetaType::Bool:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Long:
    case QMetaType::ULong:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Float:
    case QMetaType::Double:
    case QMetaType::QByteArray:
      return true;
    case QMetaType::QString:
      return isString(value.toString());
    case QMetaType::QDateTime:
      return value.toDateTime().isValid();
    case QMetaType::QVariantMap:
    case QMetaType::QVariantList:
    case QMetaType::QStringList:
      return isContainer(value, depth);
    default:
      return false;
  }
}

/// By its byte order mark; UTF-8 without one.
Result<QString> decoded(const QByteArray& bytes) {
  const auto encoding = QStringConverter::encodingForData(bytes);
  QStringDecoder decoder(encoding.value_or(QStringConverter::Utf8));
  const QString text = decoder.decode(bytes);
  if (!decoder.hasError() && text.isValidUtf16()) return text;
  return failure(Error::Kind::Damaged, QStringLiteral("its text is not valid Unicode"));
}

bool isXml(const QString& text) {
  const QStringView start = QStringView(text).trimmed();
  // Bytes in the OpenStep format begin with the same character.
  return start.startsWith(u"<?") || start.startsWith(u"<!") || start.startsWith(u"<plist");
}

}  // namespace

QDateTime dateFromReferenceSeconds(double seconds) {
  const double milliseconds = std::round(seconds * 1000);
  if (!(std::abs(milliseconds) < 9e15)) return {};
  return QDateTime::fromMSecsSinceEpoch(qint64(milliseconds) + kReferenceDate, Qt::UTC);
}

double referenceSeconds(const QDateTime& date) {
  return double(date.toMSecsSinceEpoch() - kReferenceDate) / 1000;
}

bool PropertyList::isPropertyList(const QVariant& value) { return isPropertyListAt(value, 0); }

Result<QByteArray> PropertyList::write(const QVariant& value, Format format) {
  if (!isPropertyList(value)) {
    return failure(Error::Kind::Unsupported,
                   QStringLiteral("it has values that are not property-list values, or is nested "
                                  "more than %1 deep")
                       .arg(kMaxDepth));
  }
  if (format == Format::Xml) return writeXmlPropertyList(value);
  if (format == Format::Binary) return writeBinaryPropertyList(value);
  return failure(Error::Kind::Unsupported, QStringLiteral("the OpenStep format can only be read"));
}

Result<QVariant> PropertyList::read(const QByteArray& bytes, Format* found) {
  if (bytes.size() > kMaxBytes) {
    return failure(Error::Kind::TooLarge,
                   QStringLiteral("it is larger than %1 MiB").arg(kMaxBytes >> 20));
  }
  Format format = Format::Binary;
  Result<QVariant> value;
  if (bytes.startsWith("bplist0")) {
    value = readBinaryPropertyList(bytes);
  } else {
    const Result<QString> text = decoded(bytes);
    if (!text) return tl::unexpected(text.error());
    format = isXml(*text) ? Format::Xml : Format::OpenStep;
    value = format == Format::Xml ? readXmlPropertyList(*text) : readOpenStepPropertyList(*text);
  }
  if (found && value) *found = format;
  return value;
}

}  // namespace kelvar
