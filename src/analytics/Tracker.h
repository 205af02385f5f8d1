#pragma once

#include <QList>

#include "analytics/TimedTracker.h"

namespace kelvar {

class Tracker;
using TrackerRef = std::shared_ptr<Tracker>;
using TrackerList = QList<TrackerRef>;

/// What records events. This base does nothing with them but to time those that last; what they
/// come to is for the classes derived from it.
///
/// The usual order: make the trackers, put a `TrackerManager` over them, set super properties, then
/// `track` each of the user's actions. For one that lasts, `timedTrack` when it begins,
/// `event` to count something meanwhile, `timedFinish` when it ends.
///
/// On the main thread only.
class KELVAR_EXPORT Tracker : public Object, public TimedTrackerDelegate {
 public:
  static const ClassInfo& theClass();
  const ClassInfo& classInfo() const override { return theClass(); }

  /// With a timed tracker of its own, whose delegate it is.
  Tracker();
  ~Tracker() override;

  /// Counts one on a property of the timed event, if it is going on.
  void event(const QString& name, const QString& increment);
  void timedTrack(const QString& name);
  void timedFinish(const QString& name, const Properties& properties) {
    timedFinish(name, properties, 0);
  }
  /// Started again within so many seconds, the event goes on.
  void timedFinish(const QString& name, const Properties& properties,
                   double mergeFutureEventsWithinTimeInterval);
  void timedFlush(const QString& name);

  virtual void track(const QString& name, const Properties& properties);
  void timedTrackerEventStarted(TimedTracker& timedTracker, const QString& name) override;
  void timedTrackerEventFinished(TimedTracker& timedTracker, const TimedEventRef& event) override;

  /// Replaces what is told with every event.
  virtual void setSuperProperties(const SharedProperties& properties);
  /// Ties the anonymous user to an e-mail address.
  virtual void identifyEmail(const QString& email);
  virtual void aliasId(const QString& newId, const QString& fromOld);
  /// From the tracker's own uuid.
  virtual void aliasFromUUIDTo(const QString& newId);

  /// Who this installation is, without a name; null for none.
  QString uuid() const { return uuid_; }
  virtual void setUuid(const QString& uuid) { uuid_ = uuid; }
  /// The user's address; null when it is not known.
  QString email() const { return email_; }
  virtual void setEmail(const QString& email) { email_ = email; }
  /// May be null: then nothing is timed.
  TimedTrackerRef timed() const { return timed_; }
  void setTimed(const TimedTrackerRef& timed) { timed_ = timed; }

 private:
  QString uuid_;
  QString email_;
  TimedTrackerRef timed_ = std::make_shared<TimedTracker>();
  /// Owns nothing: what the timed tracker holds weakly ends with the tracker.
  const std::shared_ptr<TimedTrackerDelegate> asDelegate_;
};

}  // namespace kelvar
