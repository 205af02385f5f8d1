#pragma once

#include <QHash>
#include <QMap>

#include "analytics/MutableTimedEvent.h"
#include "analytics/TimedTrackerDelegate.h"
#include "platform/RunLoop.h"

namespace kelvar {

using TimedTrackerRef = std::shared_ptr<TimedTracker>;

/// Measures how long named activities last, and collects their properties.
///
/// An event is started by name and finished with properties. If it is finished with a delay, it
/// stays open for that long: if it is started again in that time, both runs become one event, whose
/// length is their sum. When an event has finally ended, it is flushed: the delegate is notified,
/// and the name is free again.
///
/// Times are whole seconds of the run loop's clock. Finishing does not reset the start time, so
/// each finish requires its own start. Use on one thread, that of the run loop.
class KELVAR_EXPORT TimedTracker : public Object {
 public:
  using Events = QMap<QString, MutableTimedEventRef>;

  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  explicit TimedTracker(RunLoopRef runLoop = RunLoop::current());

  /// The current time of the run loop's clock.
  double currentTime() const;

  void start(const QString& name) { start(name, currentTime()); }
  void start(const QString& name, double sinceTime);

  /// Finishes a run. Returns the event, or null if none of that name is running.
  MutableTimedEventRef track(const QString& name, const Properties& properties) {
    return track(name, properties, currentTime());
  }
  MutableTimedEventRef track(const QString& name, const Properties& properties, double atTime) {
    return track(name, properties, atTime, 0);
  }
  /// With a delay of 0, the event is flushed immediately.
  MutableTimedEventRef track(const QString& name, const Properties& properties, double atTime,
                             double delay);

  void flushEvent(const QString& name);

  void event(const QString& name, const QString& increment) { event(name, increment, 1); }
  void event(const QString& name, const QString& increment, const QVariant& by);

  /// The running events by name.
  Events timedEvents() const { return events_; }
  const Events& events() const { return events_; }
  void setEvents(const Events& events) { events_ = events; }
  /// Time of the last finish. Informational only.
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
  /// The scheduled flushes by name.
  QHash<QString, RunLoop::Delayed> flushes_;
};

}  // namespace kelvar
