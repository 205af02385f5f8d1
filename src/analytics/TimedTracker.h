#pragma once

#include <QHash>
#include <QMap>

#include "analytics/MutableTimedEvent.h"
#include "analytics/TimedTrackerDelegate.h"
#include "platform/RunLoop.h"

namespace kelvar {

using TimedTrackerRef = std::shared_ptr<TimedTracker>;

/// Measures how long named activities last, and gathers what is told about them meanwhile.
///
/// An event is started by its name and finished with properties. Finished with a delay, it stays
/// open for that long: started again meanwhile, both runs become one event, whose length is their
/// sum. When it is over for good, it is flushed: the delegate is told, and the name is free again.
///
/// Times are whole seconds of the run loop's clock. A finish does not end the counting from the
/// last start: to each finish belongs a start. One thread, the run loop's.
class KELVAR_EXPORT TimedTracker : public Object {
 public:
  using Events = QMap<QString, MutableTimedEventRef>;

  static const ClassInfo& theClass();
  const ClassInfo& classInfo() const override { return theClass(); }

  explicit TimedTracker(RunLoopRef runLoop = RunLoop::current());

  /// The clock's reading now.
  double currentTime() const;

  void start(const QString& name) { start(name, currentTime()); }
  void start(const QString& name, double sinceTime);

  /// Finishes a run. The event, or null when none of that name is going on.
  MutableTimedEventRef track(const QString& name, const Properties& properties) {
    return track(name, properties, currentTime());
  }
  MutableTimedEventRef track(const QString& name, const Properties& properties, double atTime) {
    return track(name, properties, atTime, 0);
  }
  /// With a delay of 0 the event is flushed at once.
  MutableTimedEventRef track(const QString& name, const Properties& properties, double atTime,
                             double delay);

  void flushEvent(const QString& name);

  void event(const QString& name, const QString& increment) { event(name, increment, 1); }
  void event(const QString& name, const QString& increment, const QVariant& by);

  /// What is going on, by name.
  Events timedEvents() const { return events_; }
  const Events& events() const { return events_; }
  void setEvents(const Events& events) { events_ = events; }
  /// Of the last finish; nothing depends on it.
  double delay() const { return delay_; }
  void setDelay(double seconds) { delay_ = seconds; }
  std::weak_ptr<TimedTrackerDelegate> delegate() const { return delegate_; }
  void setDelegate(std::weak_ptr<TimedTrackerDelegate> delegate) {
    delegate_ = std::move(delegate);
  }

 private:
  std::weak_ptr<TimedTrackerDelegate> delegate_;
  Events events_;
  double delay_ = 0;
  const RunLoopRef runLoop_;
  /// The flushes to come, by name.
  QHash<QString, RunLoop::Delayed> flushes_;
};

}  // namespace kelvar
