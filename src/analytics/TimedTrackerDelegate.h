#pragma once

#include "analytics/TimedEvent.h"

namespace kelvar {

class DelegateInfo;
class TimedTracker;

/// Notified when timed events start and finish, on the timed tracker's thread.
class KELVAR_EXPORT TimedTrackerDelegate {
 public:
  virtual ~TimedTrackerDelegate();

  static const DelegateInfo& staticDelegateInfo();

  /// Called after each start of an event, also while the event is running.
  virtual void timedTrackerEventStarted(TimedTracker& timedTracker, const QString& name) = 0;
  /// Called after an event has ended for good: finished without a delay, flushed, or not started
  /// again within the delay.
  virtual void timedTrackerEventFinished(TimedTracker& timedTracker,
                                         const TimedEventRef& event) = 0;
};

}  // namespace kelvar
