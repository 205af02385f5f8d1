#include "analytics/TimedEvent.h"

#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&TimedEvent::staticClassInfo);

}  // namespace

const ClassInfo& TimedEvent::staticClassInfo() {
  static const ClassInfo kClass =
      ClassInfoBuilder<TimedEvent>("TimedEvent")
          .initializer(
              "init", [] { return std::make_shared<TimedEvent>(); },
              "Creates a finished event without a name or properties.")
          .classOperation(
              "timedEventWithName:properties:sessionLength:", &TimedEvent::timedEventWithName,
              "Creates a finished event that lasted this many seconds.")
          .property("name", &TimedEvent::name, &TimedEvent::setName, "The event's name.")
          .property("properties", &TimedEvent::properties, &TimedEvent::setProperties,
                    "What is recorded about the event.")
          .property("sessionLength", &TimedEvent::sessionLength, &TimedEvent::setSessionLength,
                    "How long the event lasted, in seconds.");
  return kClass;
}

TimedEventRef TimedEvent::timedEventWithName(const QString& name, const Properties& properties,
                                             double sessionLength) {
  const auto event = std::make_shared<TimedEvent>();
  event->setName(name);
  event->setProperties(properties);
  event->setSessionLength(sessionLength);
  return event;
}

}  // namespace kelvar
