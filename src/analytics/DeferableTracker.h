#pragma once

#include "analytics/Tracker.h"

namespace kelvar {

/// A base class for trackers that can be switched on and off. It only stores the switch.
class KELVAR_EXPORT DeferableTracker : public Tracker {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  /// Creates a tracker of the class on which it is called:
  /// `DeferableTracker::deferredTracker<MyTracker>()`.
  template <class T = DeferableTracker>
  static std::shared_ptr<T> deferredTracker() {
    return std::make_shared<T>();
  }

  /// Initially off.
  bool enabled() const { return enabled_; }
  /// Calls `enableStateDidChange`, even if nothing changes.
  void setEnabled(bool enabled);

  /// For subclasses. Does nothing by default.
  virtual void enableStateDidChange(bool enabled);

 private:
  bool enabled_ = false;
};

}  // namespace kelvar
