#include "analytics/MockedTracker.h"

#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&MockedTracker::staticClassInfo);

QVariantMap merged(QVariantMap properties, const Properties& winning) {
  if (winning) properties.insert(*winning);
  return properties;
}

}  // namespace

const ClassInfo& MockedTracker::staticClassInfo() {
  using This = MockedTracker;
  static const ClassInfo kClass =
      ClassInfoBuilder<This, Tracker>("MockedTracker")
          .initializer(
              "init", [] { return std::make_shared<This>(); },
              "Creates a tracker that remembers the last event.")
          .property("startedEvent", &This::startedEvent, &This::setStartedEvent,
                    "The name of the timed event that was started last.")
          .property("name", &This::name, &This::setName,
                    "The name of the event that was recorded or finished last.")
          .property("properties", &This::properties, &This::setProperties,
                    "The properties of the last event, merged with `globalProperties`.")
          .property("sessionLength", &This::sessionLength, &This::setSessionLength,
                    "The length of the timed event that was finished last, in seconds.")
          .property("globalProperties", &This::globalProperties, &This::setGlobalProperties,
                    "The properties that are merged into every event.");
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
