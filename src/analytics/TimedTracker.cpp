#include "analytics/TimedTracker.h"

#include <stdexcept>

#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&TimedTracker::staticClassInfo);

QVariantMap describedEvents(const TimedTracker& tracker) {
  QVariantMap events;
  const TimedTracker::Events timed = tracker.timedEvents();
  for (auto i = timed.begin(); i != timed.end(); ++i) events[i.key()] = toVariant(i.value());
  return events;
}

void setDescribedEvents(TimedTracker& tracker, const QVariantMap& described) {
  TimedTracker::Events events;
  for (auto i = described.begin(); i != described.end(); ++i) {
    const auto event = fromVariant<MutableTimedEventRef>(i.value()).value_or(nullptr);
    if (!event) throw std::invalid_argument("events that go on are objects of MutableTimedEvent");
    events.insert(i.key(), event);
  }
  tracker.setEvents(events);
}

MutableTimedEventRef finishNow(TimedTracker& self, const QString& name,
                               const Properties& properties) {
  return self.track(name, properties);
}

MutableTimedEventRef finishAt(TimedTracker& self, const QString& name, const Properties& properties,
                              double time) {
  return self.track(name, properties, time);
}

MutableTimedEventRef finishWithDelay(TimedTracker& self, const QString& name,
                                     const Properties& properties, double time, double delay) {
  return self.track(name, properties, time, delay);
}

}  // namespace

const ClassInfo& TimedTracker::staticClassInfo() {
  using This = TimedTracker;
  static const ClassInfo kClass =
      ClassInfoBuilder<This>("TimedTracker")
          .initializer(
              "init", [] { return std::make_shared<This>(); },
              "Creates a tracker on the current run loop's clock.")
          .operation(
              "start:", [](This& self, const QString& name) { self.start(name); },
              "Starts or resumes the event with this name.")
          .operation(
              "start:sinceTime:",
              [](This& self, const QString& name, double time) { self.start(name, time); },
              "Starts or resumes the event as of this time, in seconds on the run loop's clock.")
          .operation(
              "track:properties:", finishNow,
              "Finishes the event with this name and returns it, or nil if it is not running.")
          .operation(
              "track:properties:atTime:", finishAt,
              "Finishes the event as of this time and returns it, or nil if it is not running.")
          .operation(
              "track:properties:atTime:delay:", finishWithDelay,
              "Finishes the event as of this time, but lets a start within the delay, in seconds, "
              "resume it.")
          .operation("flushEvent:", &This::flushEvent,
                     "Ends the event with this name for good and tells the delegate.")
          .operation(
              "event:increment:",
              [](This& self, const QString& name, const QString& key) { self.event(name, key); },
              "Adds 1 to a property of the running event with this name.")
          .operation(
              "event:increment:by:",
              [](This& self, const QString& name, const QString& key, const QVariant& by) {
                self.event(name, key, by);
              },
              "Adds a number to a property of the running event with this name.")
          .property("timedEvents", describedEvents, "The running events by name.")
          .property("events", describedEvents, setDescribedEvents,
                    "The running events by name; replaces them when set.")
          .property("delay", &This::delay, &This::setDelay,
                    "The delay of the last finish, in seconds.")
          .property("delegate", &This::delegate, &This::setDelegate,
                    "Told when events start and finish; held weakly.");
  return kClass;
}

TimedTracker::TimedTracker(RunLoopRef runLoop) : runLoop_(std::move(runLoop)) {}

double TimedTracker::currentTime() const { return int32_t(runLoop_->mediaTime()); }

void TimedTracker::start(const QString& name, double sinceTime) {
  flushes_.remove(name);
  MutableTimedEventRef& event = events_[name];
  if (!event) event = MutableTimedEvent::timedEventWithName(name, QVariantMap(), 0);
  event->setLastStartTime(sinceTime);
  if (const auto delegate = delegate_.lock()) delegate->timedTrackerEventStarted(*this, name);
}

MutableTimedEventRef TimedTracker::track(const QString& name, const Properties& properties,
                                         double atTime, double delay) {
  flushes_.remove(name);
  delay_ = delay;
  const MutableTimedEventRef event = events_.value(name);
  if (event) {
    event->appendSessionLength(atTime - event->lastStartTime());
    event->appendProperties(properties);
  }
  if (delay == 0) {
    flushEvent(name);
  } else {
    // A due event is reported even if the tracker is no longer referenced elsewhere.
    flushes_[name] = runLoop_->performAfterDelay(
        delay, [this, self = weak_from_this().lock(), name] { flushEvent(name); });
  }
  return event;
}

void TimedTracker::flushEvent(const QString& name) {
  const MutableTimedEventRef event = events_.value(name);
  if (!event) return;
  if (const auto delegate = delegate_.lock()) delegate->timedTrackerEventFinished(*this, event);
  events_.remove(name);
}

void TimedTracker::event(const QString& name, const QString& increment, const QVariant& by) {
  if (const MutableTimedEventRef event = events_.value(name)) {
    event->incrementProperty(increment, by);
  }
}

}  // namespace kelvar
