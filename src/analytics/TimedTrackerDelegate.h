#pragma once

#include "analytics/TimedEvent.h"

namespace kelvar {

class DelegateInfo;
class TimedTracker;

/// Who is told when timed events begin and when they are over.
class KELVAR_EXPORT TimedTrackerDelegate {
 public:
  virtual ~TimedTrackerDelegate();

  static const DelegateInfo& theDelegate();

  /// At every start, also of an event that is going on.
  virtual void timedTrackerEventStarted(TimedTracker& timedTracker, const QString& name) = 0;
  virtual void timedTrackerEventFinished(TimedTracker& timedTracker,
                                         const TimedEventRef& event) = 0;
};

}  // namespace kelvar
