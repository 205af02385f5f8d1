#pragma once

#include "analytics/Event.h"
#include "analytics/Tracker.h"

namespace kelvar {

/// Keeps every event in memory and counts timed ones, to show what a manager forwards.
class KELVAR_EXPORT CounterTracker : public Tracker {
 public:
  using Events = QList<EventRef>;

  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  void track(const QString& name, const Properties& properties) override;
  void timedTrackerEventStarted(TimedTracker& timedTracker, const QString& name) override;
  void timedTrackerEventFinished(TimedTracker& timedTracker, const TimedEventRef& event) override;

  uint64_t tracksCount() const { return uint64_t(storage_.size()); }
  /// In the order of tracking.
  Events events() const { return storage_; }
  const Events& storage() const { return storage_; }
  void setStorage(const Events& storage) { storage_ = storage; }
  uint64_t timesStarted() const { return timesStarted_; }
  uint64_t timesFinished() const { return timesFinished_; }
  /// A counter for callers; the tracker itself does not use it.
  uint64_t uploadsCount() const { return uploadsCount_; }
  void setUploadsCount(uint64_t count) { uploadsCount_ = count; }

 private:
  uint64_t timesStarted_ = 0;
  uint64_t timesFinished_ = 0;
  Events storage_;
  uint64_t uploadsCount_ = 0;
};

}  // namespace kelvar
