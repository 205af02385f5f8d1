#include "runtime/Object.h"

#include "runtime/ClassInfo.h"

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

const ClassInfo::Registration kRegistered(&Object::staticClassInfo);

}  // namespace

Object::~Object() = default;

const ClassInfo& Object::staticClassInfo() {
  static const ClassInfo kClass =
      ClassInfoBuilder<Object>("NSObject")
          .initializer(
              "init", [] { return std::make_shared<Object>(); }, "Creates a plain object.")
          .operation("description", &Object::description,
                     "Returns one line of text about the object, for logs and people.")
          .operation("valueForKey:", &Object::valueForKey,
                     "Returns the value of the property with this key, or nil if there is none.")
          .operation("valueForKeyPath:", &Object::valueForKeyPath,
                     "Follows keys joined by dots, each in the value of the one before; a list "
                     "returns the values of its elements.")
          .operation("setValue:forKey:", &Object::setValueForKey,
                     "Sets the property with this key; false if there is no such property or the "
                     "value has the wrong type.");
  return kClass;
}

const ClassInfo& Object::classInfo() const { return staticClassInfo(); }

QVariant Object::valueForKey(const QString& key) const {
  const ClassInfo::Property* const property = classInfo().property(key);
  return property ? property->get(*this) : QVariant();
}

bool Object::setValueForKey(const QVariant& value, const QString& key) {
  const ClassInfo::Property* const property = classInfo().property(key);
  return property && property->set && property->set(*this, value);
}

QVariant Object::valueForKeyPath(const QString& keyPath) const {
  const qsizetype dot = keyPath.indexOf(u'.');
  if (dot < 0) return valueForKey(keyPath);
  return kelvar::valueForKeyPath(valueForKey(keyPath.first(dot)), keyPath.sliced(dot + 1));
}

QString Object::description() const { return QStringLiteral("<%1>").arg(classInfo().name()); }

QString Object::classForCoder() const { return classInfo().name(); }
ObjectRef Object::replacementObjectForCoder(Coder&) { return shared_from_this(); }
void Object::encodeWithCoder(Coder&) const {}
ObjectRef Object::awakeAfterUsingCoder(Coder&) { return shared_from_this(); }

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
