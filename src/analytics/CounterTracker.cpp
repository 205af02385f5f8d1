#include "analytics/CounterTracker.h"

#include <stdexcept>

#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&CounterTracker::theClass);

QVariantList eventsOf(const CounterTracker& tracker) {
  QVariantList events;
  for (const EventRef& event : tracker.storage()) events.append(toVariant(event));
  return events;
}

void setStorageOf(CounterTracker& tracker, const QVariantList& described) {
  CounterTracker::Events events;
  for (const QVariant& each : described) {
    const auto event = fromVariant<EventRef>(each).value_or(nullptr);
    if (!event) throw std::invalid_argument("what is stored are objects of Event");
    events.append(event);
  }
  tracker.setStorage(events);
}

}  // namespace

const ClassInfo& CounterTracker::theClass() {
  using This = CounterTracker;
  static const ClassInfo kClass =
      Description<This, Tracker>("CounterTracker")
          .initialiser("init", [] { return std::make_shared<This>(); })
          .property("timesStarted", &This::timesStarted)
          .property("timesFinished", &This::timesFinished)
          .property("tracksCount", &This::tracksCount)
          .property("events", eventsOf)
          .property("storage", eventsOf, setStorageOf)
          .property("uploadsCount", &This::uploadsCount, &This::setUploadsCount);
  return kClass;
}

void CounterTracker::track(const QString& name, const Properties& properties) {
  storage_.append(Event::eventWithName(name, properties));
}

void CounterTracker::timedTrackerEventStarted(TimedTracker&, const QString&) { ++timesStarted_; }

void CounterTracker::timedTrackerEventFinished(TimedTracker&, const TimedEventRef&) {
  ++timesFinished_;
}

}  // namespace kelvar
