#include "analytics/MutableTimedEvent.h"

#include <charconv>

#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&MutableTimedEvent::staticClassInfo);

/// The number at the start of the text.
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

const ClassInfo& MutableTimedEvent::staticClassInfo() {
  using This = MutableTimedEvent;
  static const ClassInfo kClass =
      ClassInfoBuilder<This, TimedEvent>("MutableTimedEvent")
          .initializer(
              "init", [] { return std::make_shared<This>(); },
              "Creates a running event without a name or properties.")
          .classOperation("timedEventWithName:properties:sessionLength:", &This::timedEventWithName,
                          "Creates a running event that has lasted this many seconds.")
          .operation("appendProperties:", &This::appendProperties,
                     "Adds properties; new values replace old ones.")
          .operation(
              "incrementProperty:",
              [](This& self, const QString& key) { self.incrementProperty(key); },
              "Adds 1 to a property; one that is not a number counts as 0.")
          .operation(
              "incrementProperty:by:",
              [](This& self, const QString& key, const QVariant& by) {
                self.incrementProperty(key, by);
              },
              "Adds a number to a property; one that is not a number counts as 0.")
          .operation("appendSessionLength:", &This::appendSessionLength,
                     "Adds seconds to the event's length.")
          .property("lastStartTime", &This::lastStartTime, &This::setLastStartTime,
                    "When the event was last started, in seconds on its tracker's clock.");
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
