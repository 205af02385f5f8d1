#include "analytics/ScriptedTracker.h"

namespace kelvar {

void ScriptedTracker::track(const QString& name, const Properties& properties) {
  call("track:properties:", name, properties);
}

void ScriptedTracker::timedTrackerEventStarted(TimedTracker& timedTracker, const QString& name) {
  call("timedTracker:eventStarted:", timedTracker, name);
}

void ScriptedTracker::timedTrackerEventFinished(TimedTracker& timedTracker,
                                                const TimedEventRef& event) {
  call("timedTracker:eventFinished:", timedTracker, event);
}

void ScriptedTracker::setSuperProperties(const SharedProperties& properties) {
  call("setSuperProperties:", properties ? QVariant(*properties) : QVariant());
}

void ScriptedTracker::addSuperProperties(const QVariantMap& properties) {
  call("addSuperProperties:", properties);
}

void ScriptedTracker::identifyEmail(const QString& email) { call("identifyEmail:", email); }

void ScriptedTracker::aliasId(const QString& newId, const QString& fromOld) {
  call("aliasId:fromOld:", newId, fromOld);
}

void ScriptedTracker::aliasFromUUIDTo(const QString& newId) { call("aliasFromUUIDTo:", newId); }

void ScriptedTracker::setUuid(const QString& uuid) {
  Tracker::setUuid(uuid);
  call("setUuid:", uuid);
}

void ScriptedTracker::setEmail(const QString& email) {
  Tracker::setEmail(email);
  call("setEmail:", email);
}

}  // namespace kelvar
