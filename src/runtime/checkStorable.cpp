#include "runtime/checkStorable.h"

#include "platform/QtError.h"
#include "platform/plist/PropertyList.h"
#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

QString kindOf(const QVariant& value) {
  if (value.metaType() == QMetaType::fromType<ObjectRef>()) {
    const auto object = value.value<ObjectRef>();
    return object ? QStringLiteral("an object of class %1").arg(object->classInfo().name())
                  : QStringLiteral("nil");
  }
  if (isNothing(value)) return QStringLiteral("nil");
  if (value.typeId() == QMetaType::QString) return QStringLiteral("text that is not valid Unicode");
  return QStringLiteral("no property-list value");
}

/// The first place that is no property list, with what is there; null if there is none.
QString problemAt(const QString& place, const QVariant& value, int depth) {
  if (depth > PropertyList::kMaxDepth) return QStringLiteral("it is nested too deeply");
  if (value.typeId() == QMetaType::QVariantMap) {
    const QVariantMap map = value.toMap();
    for (auto i = map.begin(); i != map.end(); ++i) {
      const QString inner = place.isEmpty() ? i.key() : place + u'.' + i.key();
      if (!i.key().isValidUtf16()) return QStringLiteral("a key is not valid Unicode");
      if (const QString found = problemAt(inner, i.value(), depth + 1); !found.isNull()) {
        return found;
      }
    }
    return {};
  }
  if (value.typeId() == QMetaType::QVariantList) {
    const QVariantList list = value.toList();
    for (qsizetype i = 0; i < list.size(); ++i) {
      const QString inner = QStringLiteral("%1[%2]").arg(place).arg(i);
      if (const QString found = problemAt(inner, list[i], depth + 1); !found.isNull()) return found;
    }
    return {};
  }
  if (PropertyList::isPropertyList(value)) return {};
  return QStringLiteral("%1 is %2")
      .arg(place.isEmpty() ? QStringLiteral("it") : place, kindOf(value));
}

}  // namespace

Result<void> checkStorable(const QVariant& value, const QString& key) {
  if (key.isNull()) {
    return failure(Error::Kind::Unsupported,
                   QStringLiteral("a value is stored under a key, not nil"));
  }
  if (!value.isValid() || PropertyList::isPropertyList(value)) return {};
  const QString problem = problemAt({}, value, 0);
  return failure(
      Error::Kind::Unsupported,
      QStringLiteral("the value for %1 cannot be stored: %2")
          .arg(key, problem.isNull() ? QStringLiteral("it is nested too deeply") : problem));
}

}  // namespace kelvar
