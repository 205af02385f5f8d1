#include "analytics/TimedEvent.h"

#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&TimedEvent::theClass);

}  // namespace

const ClassInfo& TimedEvent::theClass() {
  static const ClassInfo kClass =
      Description<TimedEvent>("TimedEvent")
          .initialiser("init", [] { return std::make_shared<TimedEvent>(); })
          .classOperation("timedEventWithName:properties:sessionLength:",
                          &TimedEvent::timedEventWithName)
          .property("name", &TimedEvent::name, &TimedEvent::setName)
          .property("properties", &TimedEvent::properties, &TimedEvent::setProperties)
          .property("sessionLength", &TimedEvent::sessionLength, &TimedEvent::setSessionLength);
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
