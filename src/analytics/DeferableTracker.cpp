#include "analytics/DeferableTracker.h"

#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&DeferableTracker::staticClassInfo);

}  // namespace

const ClassInfo& DeferableTracker::staticClassInfo() {
  using This = DeferableTracker;
  static const ClassInfo kClass =
      ClassInfoBuilder<This, Tracker>("DeferableTracker")
          .classOperation(
              "deferredTracker", [] { return deferredTracker(); },
              "Creates a tracker that is switched off.")
          .initializer(
              "init", [] { return std::make_shared<This>(); },
              "Creates a tracker that is switched off.")
          .operation(
              "enableStateDidChange:", &This::enableStateDidChange,
              "Called with the new value each time `enabled` is set; does nothing in this class.")
          .property("enabled", &This::enabled, &This::setEnabled,
                    "Whether the tracker is switched on.");
  return kClass;
}

void DeferableTracker::setEnabled(bool enabled) {
  enabled_ = enabled;
  enableStateDidChange(enabled);
}

void DeferableTracker::enableStateDidChange(bool) {}

}  // namespace kelvar
