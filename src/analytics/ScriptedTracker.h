#pragma once

#include "analytics/SuperPropertiesMerging.h"
#include "analytics/Tracker.h"
#include "runtime/Implementation.h"

namespace kelvar {

/// A tracker that a script's object implements. What the object lacks does nothing.
class ScriptedTracker : public Tracker, public SuperPropertiesMerging, public Implemented {
 public:
  using Implemented::Implemented;

  void track(const QString& name, const Properties& properties) override;
  void timedTrackerEventStarted(TimedTracker& timedTracker, const QString& name) override;
  void timedTrackerEventFinished(TimedTracker& timedTracker, const TimedEventRef& event) override;
  void setSuperProperties(const SharedProperties& properties) override;
  void addSuperProperties(const QVariantMap& properties) override;
  void identifyEmail(const QString& email) override;
  void aliasId(const QString& newId, const QString& fromOld) override;
  void aliasFromUUIDTo(const QString& newId) override;
  void setUuid(const QString& uuid) override;
  void setEmail(const QString& email) override;
};

}  // namespace kelvar
