#include "analytics/Tracker.h"

#include "analytics/ScriptedTracker.h"
#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&Tracker::staticClassInfo);

void eventStarted(Tracker& self, const TimedTrackerRef& timed, const QString& name) {
  if (timed) self.timedTrackerEventStarted(*timed, name);
}

void eventFinished(Tracker& self, const TimedTrackerRef& timed, const TimedEventRef& event) {
  if (timed) self.timedTrackerEventFinished(*timed, event);
}

void replaceSuperProperties(Tracker& self, const Properties& properties) {
  self.setSuperProperties(properties ? std::make_shared<QVariantMap>(*properties) : nullptr);
}

}  // namespace

const ClassInfo& Tracker::staticClassInfo() {
  static const ClassInfo kClass =
      ClassInfoBuilder<Tracker>("Tracker")
          .initializer(
              "init", [] { return std::make_shared<Tracker>(); },
              "Creates a tracker that times events and otherwise ignores them.")
          .operation("event:increment:", &Tracker::event,
                     "Adds 1 to a property of the timed event with this name, if it is running.")
          .operation("timedTrack:", &Tracker::timedTrack, "Starts the timed event with this name.")
          .operation(
              "timedFinish:properties:",
              [](Tracker& self, const QString& name, const Properties& properties) {
                self.timedFinish(name, properties);
              },
              "Finishes the timed event with this name.")
          .operation(
              "timedFinish:properties:mergeFutureEventsWithinTimeInterval:",
              [](Tracker& self, const QString& name, const Properties& properties,
                 double interval) { self.timedFinish(name, properties, interval); },
              "Finishes the timed event, but lets a start within so many seconds resume it.")
          .operation("timedFlush:", &Tracker::timedFlush,
                     "Ends the timed event with this name for good.")
          .operation("track:properties:", &Tracker::track, "Records an event.")
          .operation("timedTracker:eventStarted:", eventStarted,
                     "Handles the start of a timed event, as the delegate of `timed`.")
          .operation("timedTracker:eventFinished:", eventFinished,
                     "Handles the end of a timed event, as the delegate of `timed`.")
          .operation("setSuperProperties:", replaceSuperProperties,
                     "Replaces the properties that are recorded with every event.")
          .operation("identifyEmail:", &Tracker::identifyEmail,
                     "Links the anonymous user to an email address.")
          .operation("aliasId:fromOld:", &Tracker::aliasId,
                     "Tells the server that a new identity belongs to the same user as an old one.")
          .operation(
              "aliasFromUUIDTo:", &Tracker::aliasFromUUIDTo,
              "Tells the server that a new identity belongs to the user with this tracker's uuid.")
          .property("uuid", &Tracker::uuid, &Tracker::setUuid,
                    "The anonymous identity of this installation.")
          .property("email", &Tracker::email, &Tracker::setEmail,
                    "The user's email address, or nil if it is unknown.")
          .property("timed", &Tracker::timed, &Tracker::setTimed,
                    "The tracker that times events; nil for no timing.")
          .implementable<ScriptedTracker>({QStringLiteral("track:properties:")});
  return kClass;
}

// The type of the pointer matters: one to `Object` would take over `shared_from_this`.
Tracker::Tracker()
    : asDelegate_(static_cast<TimedTrackerDelegate*>(this), [](TimedTrackerDelegate*) {}) {
  timed_->setDelegate(asDelegate_);
}

Tracker::~Tracker() = default;

void Tracker::event(const QString& name, const QString& increment) {
  if (timed_) timed_->event(name, increment);
}

void Tracker::timedTrack(const QString& name) {
  if (timed_) timed_->start(name);
}

void Tracker::timedFinish(const QString& name, const Properties& properties,
                          double mergeFutureEventsWithinTimeInterval) {
  if (!timed_) return;
  timed_->track(name, properties, timed_->currentTime(), mergeFutureEventsWithinTimeInterval);
}

void Tracker::timedFlush(const QString& name) {
  if (timed_) timed_->flushEvent(name);
}

void Tracker::track(const QString&, const Properties&) {}
void Tracker::timedTrackerEventStarted(TimedTracker&, const QString&) {}
void Tracker::timedTrackerEventFinished(TimedTracker&, const TimedEventRef&) {}
void Tracker::setSuperProperties(const SharedProperties&) {}
void Tracker::identifyEmail(const QString&) {}
void Tracker::aliasId(const QString&, const QString&) {}
void Tracker::aliasFromUUIDTo(const QString&) {}

}  // namespace kelvar
