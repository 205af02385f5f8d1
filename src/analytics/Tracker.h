#pragma once

#include <QList>

#include "analytics/TimedTracker.h"

namespace kelvar {

class Tracker;
using TrackerRef = std::shared_ptr<Tracker>;
using TrackerList = QList<TrackerRef>;

/// Records events. This base class only measures timed events; subclasses decide what to do with
/// events.
///
/// Typical use: create the trackers, create a `TrackerManager` for them, set super properties, then
/// call `track` for each user action. For an action that lasts, call `timedTrack` when it begins,
/// `event` to count something in the meantime, and `timedFinish` when it ends.
///
/// Use on the main thread only.
class KELVAR_EXPORT Tracker : public Object, public TimedTrackerDelegate {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  /// Creates its own timed tracker and becomes its delegate.
  Tracker();
  ~Tracker() override;

  /// Adds 1 to a property of the timed event if it is running.
  void event(const QString& name, const QString& increment);
  void timedTrack(const QString& name);
  void timedFinish(const QString& name, const Properties& properties) {
    timedFinish(name, properties, 0);
  }
  /// If the event is started again within this many seconds, it continues.
  void timedFinish(const QString& name, const Properties& properties,
                   double mergeFutureEventsWithinTimeInterval);
  void timedFlush(const QString& name);

  virtual void track(const QString& name, const Properties& properties);
  void timedTrackerEventStarted(TimedTracker& timedTracker, const QString& name) override;
  void timedTrackerEventFinished(TimedTracker& timedTracker, const TimedEventRef& event) override;

  /// Replaces the properties that are sent with every event.
  virtual void setSuperProperties(const SharedProperties& properties);
  /// Links the anonymous user to an email address.
  virtual void identifyEmail(const QString& email);
  virtual void aliasId(const QString& newId, const QString& fromOld);
  /// Links the tracker's own uuid.
  virtual void aliasFromUUIDTo(const QString& newId);

  /// Anonymous identifier of this installation; null for none.
  QString uuid() const { return uuid_; }
  virtual void setUuid(const QString& uuid) { uuid_ = uuid; }
  /// The user's email address; null if unknown.
  QString email() const { return email_; }
  virtual void setEmail(const QString& email) { email_ = email; }
  /// May be null: then timed events are ignored.
  TimedTrackerRef timed() const { return timed_; }
  void setTimed(const TimedTrackerRef& timed) { timed_ = timed; }

 private:
  QString uuid_;
  QString email_;
  TimedTrackerRef timed_ = std::make_shared<TimedTracker>();
  /// A non-owning pointer: the timed tracker's weak reference expires with the tracker.
  const std::shared_ptr<TimedTrackerDelegate> asDelegate_;
};

}  // namespace kelvar
