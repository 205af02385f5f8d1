#pragma once

#include "analytics/Tracker.h"

namespace kelvar {

/// Keeps the last event with its merged properties, to show what a manager forwards.
class KELVAR_EXPORT MockedTracker : public Tracker {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  void track(const QString& name, const Properties& properties) override;
  void timedTrackerEventStarted(TimedTracker& timedTracker, const QString& name) override;
  void timedTrackerEventFinished(TimedTracker& timedTracker, const TimedEventRef& event) override;
  /// Adds to the existing properties; given values replace existing ones.
  void setSuperProperties(const SharedProperties& properties) override;

  /// Name of the timed event that was started last.
  QString startedEvent() const { return startedEvent_; }
  void setStartedEvent(const QString& name) { startedEvent_ = name; }
  /// Properties of the event that was tracked or finished last.
  QString name() const { return name_; }
  void setName(const QString& name) { name_ = name; }
  Properties properties() const { return properties_; }
  void setProperties(const Properties& properties) { properties_ = properties; }
  /// Length in seconds of the timed event that was finished last.
  double sessionLength() const { return sessionLength_; }
  void setSessionLength(double seconds) { sessionLength_ = seconds; }
  /// The super properties.
  const QVariantMap& globalProperties() const { return globalProperties_; }
  void setGlobalProperties(const QVariantMap& properties) { globalProperties_ = properties; }

 private:
  QString startedEvent_;
  QString name_;
  Properties properties_;
  double sessionLength_ = 0;
  QVariantMap globalProperties_;
};

}  // namespace kelvar
