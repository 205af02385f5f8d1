#include "analytics/DeferableTracker.h"

#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&DeferableTracker::theClass);

}  // namespace

const ClassInfo& DeferableTracker::theClass() {
  using This = DeferableTracker;
  static const ClassInfo kClass =
      Description<This, Tracker>("DeferableTracker")
          .classOperation("deferredTracker", [] { return deferredTracker(); })
          .initialiser("init", [] { return std::make_shared<This>(); })
          .operation("enableStateDidChange:", &This::enableStateDidChange)
          .property("enabled", &This::enabled, &This::setEnabled);
  return kClass;
}

void DeferableTracker::setEnabled(bool enabled) {
  enabled_ = enabled;
  enableStateDidChange(enabled);
}

void DeferableTracker::enableStateDidChange(bool) {}

}  // namespace kelvar
