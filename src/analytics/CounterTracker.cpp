#include "analytics/CounterTracker.h"

#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&CounterTracker::staticClassInfo);

}  // namespace

const ClassInfo& CounterTracker::staticClassInfo() {
  using This = CounterTracker;
  static const ClassInfo kClass =
      ClassInfoBuilder<This, Tracker>("CounterTracker")
          .initializer(
              "init", [] { return std::make_shared<This>(); },
              "Creates a tracker that keeps its events in memory.")
          .property("timesStarted", &This::timesStarted, "How many timed events were started.")
          .property("timesFinished", &This::timesFinished, "How many timed events were finished.")
          .property("tracksCount", &This::tracksCount, "How many events are stored.")
          .property("events", &This::events, "The stored events in the order of recording.")
          .property("storage", &This::storage, &This::setStorage,
                    "The stored events; replaces them when set.")
          .property("uploadsCount", &This::uploadsCount, &This::setUploadsCount,
                    "A counter for the caller's own use.");
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
