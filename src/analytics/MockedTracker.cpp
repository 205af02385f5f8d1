#include "analytics/MockedTracker.h"

#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&MockedTracker::theClass);

QVariantMap merged(QVariantMap properties, const Properties& winning) {
  if (winning) properties.insert(*winning);
  return properties;
}

}  // namespace

const ClassInfo& MockedTracker::theClass() {
  using This = MockedTracker;
  static const ClassInfo kClass =
      Description<This, Tracker>("MockedTracker")
          .initialiser("init", [] { return std::make_shared<This>(); })
          .property("startedEvent", &This::startedEvent, &This::setStartedEvent)
          .property("name", &This::name, &This::setName)
          .property("properties", &This::properties, &This::setProperties)
          .property("sessionLength", &This::sessionLength, &This::setSessionLength)
          .property("globalProperties", &This::globalProperties, &This::setGlobalProperties);
  return kClass;
}

void MockedTracker::track(const QString& name, const Properties& properties) {
  name_ = name;
  properties_ = merged(globalProperties_, properties);
}

void MockedTracker::timedTrackerEventStarted(TimedTracker&, const QString& name) {
  startedEvent_ = name;
}

void MockedTracker::timedTrackerEventFinished(TimedTracker&, const TimedEventRef& event) {
  name_ = event->name();
  properties_ = merged(globalProperties_, event->properties());
  sessionLength_ = event->sessionLength();
}

void MockedTracker::setSuperProperties(const SharedProperties& properties) {
  if (properties) globalProperties_.insert(*properties);
}

}  // namespace kelvar
