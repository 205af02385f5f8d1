#include "analytics/Tracker.h"

#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&Tracker::theClass);

}  // namespace

const ClassInfo& Tracker::theClass() {
  static const ClassInfo kClass =
      Description<Tracker>("Tracker")
          .initialiser("init", [] { return std::make_shared<Tracker>(); })
          .operation("event:increment:", &Tracker::event)
          .operation("timedTrack:", &Tracker::timedTrack)
          .operation("timedFinish:properties:",
                     [](Tracker& self, const QString& name, const Properties& properties) {
                       self.timedFinish(name, properties);
                     })
          .operation("timedFinish:properties:mergeFutureEventsWithinTimeInterval:",
                     [](Tracker& self, const QString& name, const Properties& properties,
                        double interval) { self.timedFinish(name, properties, interval); })
          .operation("timedFlush:", &Tracker::timedFlush)
          .operation("track:properties:", &Tracker::track)
          .operation("timedTracker:eventStarted:",
                     [](Tracker& self, const TimedTrackerRef& timedTracker, const QString& name) {
                       if (timedTracker) self.timedTrackerEventStarted(*timedTracker, name);
                     })
          .operation(
              "timedTracker:eventFinished:",
              [](Tracker& self, const TimedTrackerRef& timedTracker, const TimedEventRef& event) {
                if (timedTracker) self.timedTrackerEventFinished(*timedTracker, event);
              })
          .operation("setSuperProperties:",
                     [](Tracker& self, const Properties& properties) {
                       self.setSuperProperties(
                           properties ? std::make_shared<QVariantMap>(*properties) : nullptr);
                     })
          .operation("identifyEmail:", &Tracker::identifyEmail)
          .operation("aliasId:fromOld:", &Tracker::aliasId)
          .operation("aliasFromUUIDTo:", &Tracker::aliasFromUUIDTo)
          .property("uuid", &Tracker::uuid, &Tracker::setUuid)
          .property("email", &Tracker::email, &Tracker::setEmail)
          .property("timed", &Tracker::timed, &Tracker::setTimed);
  return kClass;
}

// The pointer's type matters: from that of an `Object` it would take `shared_from_this` over.
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
