#include "analytics/MutableTimedEvent.h"

#include <charconv>

#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&MutableTimedEvent::theClass);

/// The number that the text begins with.
float leadingNumber(const QString& text) {
  QByteArray digits = text.trimmed().toLatin1();
  if (digits.startsWith('+')) digits.remove(0, 1);
  float number = 0;
  const auto [end, error] = std::from_chars(digits.begin(), digits.end(), number);
  return error == std::errc() && std::isfinite(number) ? number : 0;
}

float floatValue(const QVariant& value) {
  if (value.typeId() == QMetaType::QString) return leadingNumber(value.toString());
  return fromVariant<float>(value).value_or(0);
}

}  // namespace

const ClassInfo& MutableTimedEvent::theClass() {
  using This = MutableTimedEvent;
  static const ClassInfo kClass =
      Description<This, TimedEvent>("MutableTimedEvent")
          .initialiser("init", [] { return std::make_shared<This>(); })
          .classOperation("timedEventWithName:properties:sessionLength:", &This::timedEventWithName)
          .operation("appendProperties:", &This::appendProperties)
          .operation("incrementProperty:",
                     [](This& self, const QString& key) { self.incrementProperty(key); })
          .operation("incrementProperty:by:",
                     [](This& self, const QString& key, const QVariant& by) {
                       self.incrementProperty(key, by);
                     })
          .operation("appendSessionLength:", &This::appendSessionLength)
          .property("lastStartTime", &This::lastStartTime, &This::setLastStartTime);
  return kClass;
}

MutableTimedEventRef MutableTimedEvent::timedEventWithName(const QString& name,
                                                           const Properties& properties,
                                                           double sessionLength) {
  const auto event = std::make_shared<MutableTimedEvent>();
  event->setName(name);
  event->setProperties(properties);
  event->setSessionLength(sessionLength);
  return event;
}

void MutableTimedEvent::appendProperties(const Properties& properties) {
  QVariantMap merged = this->properties().value_or(QVariantMap());
  if (properties) merged.insert(*properties);
  setProperties(merged);
}

void MutableTimedEvent::incrementProperty(const QString& key, const QVariant& by) {
  QVariantMap counted = properties().value_or(QVariantMap());
  counted[key] = floatValue(counted.value(key)) + floatValue(by);
  setProperties(counted);
}

}  // namespace kelvar
