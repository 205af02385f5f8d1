#pragma once

#include "analytics/TimedEvent.h"

namespace kelvar {

class MutableTimedEvent;
using MutableTimedEventRef = std::shared_ptr<MutableTimedEvent>;

/// A running timed event. Its properties and its length only grow.
class KELVAR_EXPORT MutableTimedEvent : public TimedEvent {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  static MutableTimedEventRef timedEventWithName(const QString& name, const Properties& properties,
                                                 double sessionLength);

  /// Given values replace existing ones.
  void appendProperties(const Properties& properties);

  void incrementProperty(const QString& key) { incrementProperty(key, 1); }
  /// Adds as `float`, which loses whole numbers above 2^24. A value that is not a number and does
  /// not begin with one counts as 0.
  void incrementProperty(const QString& key, const QVariant& by);

  void appendSessionLength(double seconds) { setSessionLength(sessionLength() + seconds); }

  /// When it was last started, on the tracker's clock.
  double lastStartTime() const { return lastStartTime_; }
  void setLastStartTime(double seconds) { lastStartTime_ = seconds; }

 private:
  double lastStartTime_ = 0;
};

}  // namespace kelvar
