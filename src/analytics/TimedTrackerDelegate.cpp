#include "analytics/TimedTrackerDelegate.h"

#include <functional>

#include "analytics/TimedTracker.h"
#include "runtime/DelegateInfo.h"

namespace kelvar {
namespace {

/// One that a script implements.
struct ScriptedDelegate : TimedTrackerDelegate {
  std::function<void(TimedTracker&, const QString&)> eventStarted;
  std::function<void(TimedTracker&, const TimedEventRef&)> eventFinished;

  void timedTrackerEventStarted(TimedTracker& timedTracker, const QString& name) override {
    if (eventStarted) eventStarted(timedTracker, name);
  }
  void timedTrackerEventFinished(TimedTracker& timedTracker, const TimedEventRef& event) override {
    if (eventFinished) eventFinished(timedTracker, event);
  }
};

}  // namespace

TimedTrackerDelegate::~TimedTrackerDelegate() = default;

const DelegateInfo& TimedTrackerDelegate::theDelegate() {
  using Scripted = ScriptedDelegate;
  static const DelegateInfo kDelegate =
      DelegateDescription<Scripted, TimedTrackerDelegate>("TimedTrackerDelegate")
          .operation("timedTracker:eventStarted:", &Scripted::eventStarted)
          .operation("timedTracker:eventFinished:", &Scripted::eventFinished);
  return kDelegate;
}

}  // namespace kelvar
