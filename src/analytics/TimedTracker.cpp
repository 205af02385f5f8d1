#include "analytics/TimedTracker.h"

#include <stdexcept>

#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&TimedTracker::theClass);

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

}  // namespace

const ClassInfo& TimedTracker::theClass() {
  using This = TimedTracker;
  static const ClassInfo kClass =
      Description<This>("TimedTracker")
          .initialiser("init", [] { return std::make_shared<This>(); })
          .operation("start:", [](This& self, const QString& name) { self.start(name); })
          .operation("start:sinceTime:",
                     [](This& self, const QString& name, double time) { self.start(name, time); })
          .operation("track:properties:",
                     [](This& self, const QString& name, const Properties& properties) {
                       return self.track(name, properties);
                     })
          .operation("track:properties:atTime:",
                     [](This& self, const QString& name, const Properties& properties,
                        double time) { return self.track(name, properties, time); })
          .operation("track:properties:atTime:delay:",
                     [](This& self, const QString& name, const Properties& properties, double time,
                        double delay) { return self.track(name, properties, time, delay); })
          .operation("flushEvent:", &This::flushEvent)
          .operation("event:increment:", [](This& self, const QString& name,
                                            const QString& key) { self.event(name, key); })
          .operation("event:increment:by:", [](This& self, const QString& name, const QString& key,
                                               const QVariant& by) { self.event(name, key, by); })
          .property("timedEvents", describedEvents)
          .property("events", describedEvents, setDescribedEvents)
          .property("delay", &This::delay, &This::setDelay)
          .property("delegate", &This::delegate, &This::setDelegate);
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
    // What is due is reported even when nobody holds the tracker any more.
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
