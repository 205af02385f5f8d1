#include "runtime/Object.h"

namespace kelvar {
namespace {

QVariant valueForKey(const QVariant& value, const QString& key) {
  if (value.metaType() == QMetaType::fromType<ObjectRef>()) {
    const auto object = value.value<ObjectRef>();
    return object ? object->valueForKey(key) : QVariant();
  }
  if (value.metaType() == QMetaType::fromType<QVariantMap>()) return value.toMap().value(key);
  if (value.metaType() != QMetaType::fromType<QVariantList>()) return {};
  QVariantList values;
  for (const QVariant& element : value.toList()) {
    const QVariant found = valueForKey(element, key);
    values.append(found.isValid() ? found : QVariant::fromValue(nullptr));
  }
  return values;
}

}  // namespace

Object::~Object() = default;

QVariant Object::valueForKey(const QString&) const { return {}; }

QVariant Object::valueForKeyPath(const QString& keyPath) const {
  const qsizetype dot = keyPath.indexOf(u'.');
  if (dot < 0) return valueForKey(keyPath);
  return kelvar::valueForKeyPath(valueForKey(keyPath.first(dot)), keyPath.sliced(dot + 1));
}

QString Object::description() const { return QStringLiteral("<Object>"); }

QVariant valueForKeyPath(const QVariant& value, const QString& keyPath) {
  if (value.metaType() == QMetaType::fromType<ObjectRef>()) {
    const auto object = value.value<ObjectRef>();
    return object ? object->valueForKeyPath(keyPath) : QVariant();
  }
  const qsizetype dot = keyPath.indexOf(u'.');
  const QVariant first = valueForKey(value, dot < 0 ? keyPath : keyPath.first(dot));
  return dot < 0 ? first : valueForKeyPath(first, keyPath.sliced(dot + 1));
}

}  // namespace kelvar
