#include "archive/ArchiveScalars.h"

#include <QDateTime>
#include <QRegularExpression>
#include <QUrl>

#include "runtime/Conversion.h"
#include "runtime/leadingNumber.h"

namespace kelvar {

bool archivedBool(const QVariant& value) {
  if (value.typeId() != QMetaType::QString) return isNumber(value) && value.toBool();
  static const QRegularExpression kYes(QStringLiteral("^\\s*[+-]?0*[YyTt1-9]"));
  return kYes.match(value.toString()).hasMatch();
}

int32_t archivedInt(const QVariant& value) {
  if (value.typeId() == QMetaType::QString) return leadingNumber<int32_t>(value.toString());
  return isNumber(value) ? numberFrom<int32_t>(value) : 0;
}

int64_t archivedInt64(const QVariant& value) {
  if (value.typeId() == QMetaType::QString) return leadingNumber<int64_t>(value.toString());
  return isNumber(value) ? numberFrom<int64_t>(value) : 0;
}

double archivedReal(const QVariant& value) {
  if (value.typeId() == QMetaType::QString) return leadingNumber<double>(value.toString());
  return isNumber(value) ? value.toDouble() : 0;
}

QString archivedClassName(const QVariant& value) {
  switch (value.typeId()) {
    case QMetaType::QVariantList:
      return QStringLiteral("NSMutableArray");
    case QMetaType::QVariantMap:
      return QStringLiteral("NSMutableDictionary");
    case QMetaType::QString:
      return QStringLiteral("NSString");
    case QMetaType::QByteArray:
      return QStringLiteral("NSData");
    case QMetaType::QDateTime:
      return QStringLiteral("NSDate");
    case QMetaType::Nullptr:
      return QStringLiteral("NSNull");
    default:
      return QStringLiteral("NSNumber");
  }
}

ObjectRef objectIn(const QVariant& value) {
  return value.metaType() == QMetaType::fromType<ObjectRef>() ? value.value<ObjectRef>() : nullptr;
}

bool isNone(const QVariant& value) {
  if (value.typeId() == QMetaType::QString) return value.toString().isNull();
  if (value.typeId() == QMetaType::QDateTime) return !value.toDateTime().isValid();
  if (value.typeId() == QMetaType::QUrl) return value.toUrl().isEmpty();
  if (value.metaType() == QMetaType::fromType<ObjectRef>()) return !objectIn(value);
  return !value.isValid();
}

}  // namespace kelvar
