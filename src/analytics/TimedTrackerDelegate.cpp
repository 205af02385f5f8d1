#include "analytics/TimedTrackerDelegate.h"

#include "analytics/TimedTracker.h"
#include "runtime/DelegateInfo.h"

namespace kelvar {
namespace {

/// A delegate implemented by a script.
struct ScriptedDelegate : TimedTrackerDelegate {
  DelegateFunction<void(TimedTracker&, const QString&)> eventStarted;
  DelegateFunction<void(TimedTracker&, const TimedEventRef&)> eventFinished;

  void timedTrackerEventStarted(TimedTracker& timedTracker, const QString& name) override {
    if (eventStarted) eventStarted(timedTracker, name);
  }
  void timedTrackerEventFinished(TimedTracker& timedTracker, const TimedEventRef& event) override {
    if (eventFinished) eventFinished(timedTracker, event);
  }
};

}  // namespace

TimedTrackerDelegate::~TimedTrackerDelegate() = default;

const DelegateInfo& TimedTrackerDelegate::staticDelegateInfo() {
  using Scripted = ScriptedDelegate;
  static const DelegateInfo kDelegate =
      DelegateInfoBuilder<Scripted, TimedTrackerDelegate>("TimedTrackerDelegate")
          .operation("timedTracker:eventStarted:", &Scripted::eventStarted,
                     "Called after each start of an event, with its name, also while the event is "
                     "running.")
          .operation("timedTracker:eventFinished:", &Scripted::eventFinished,
                     "Called after an event has ended for good, with the event.");
  return kDelegate;
}

}  // namespace kelvar
