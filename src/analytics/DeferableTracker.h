#pragma once

#include "analytics/Tracker.h"

namespace kelvar {

/// A base for trackers that can be switched on and off. It only holds the switch.
class KELVAR_EXPORT DeferableTracker : public Tracker {
 public:
  static const ClassInfo& theClass();
  const ClassInfo& classInfo() const override { return theClass(); }

  /// A new one of the class on which it is called, as in
  /// `DeferableTracker::deferredTracker<MyTracker>()`.
  template <class T = DeferableTracker>
  static std::shared_ptr<T> deferredTracker() {
    return std::make_shared<T>();
  }

  /// Off at first.
  bool enabled() const { return enabled_; }
  /// Calls `enableStateDidChange`, also when nothing changes.
  void setEnabled(bool enabled);

  /// For those derived from it. Does nothing here.
  virtual void enableStateDidChange(bool enabled);

 private:
  bool enabled_ = false;
};

}  // namespace kelvar
