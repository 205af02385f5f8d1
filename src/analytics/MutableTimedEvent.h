#pragma once

#include "analytics/TimedEvent.h"

namespace kelvar {

class MutableTimedEvent;
using MutableTimedEventRef = std::shared_ptr<MutableTimedEvent>;

/// A timed event that is still going on. Its properties and its length only grow.
class KELVAR_EXPORT MutableTimedEvent : public TimedEvent {
 public:
  static const ClassInfo& theClass();
  const ClassInfo& classInfo() const override { return theClass(); }

  static MutableTimedEventRef timedEventWithName(const QString& name, const Properties& properties,
                                                 double sessionLength);

  /// Where both have a key, the value given wins.
  void appendProperties(const Properties& properties);

  void incrementProperty(const QString& key) { incrementProperty(key, 1); }
  /// Counts in floats, which lose units above 2^24. What is no number, nor begins like one, counts
  /// as 0.
  void incrementProperty(const QString& key, const QVariant& by);

  void appendSessionLength(double seconds) { setSessionLength(sessionLength() + seconds); }

  /// When it was started last, on the clock of its tracker.
  double lastStartTime() const { return lastStartTime_; }
  void setLastStartTime(double seconds) { lastStartTime_ = seconds; }

 private:
  double lastStartTime_ = 0;
};

}  // namespace kelvar
