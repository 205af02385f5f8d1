#pragma once

#include "analytics/SuperPropertiesMerging.h"
#include "analytics/Tracker.h"
#include "analytics/TrackerPersister.h"

extern "C" {

/// What callers name the event that ends a session.
KELVAR_EXPORT extern const char TrackerManagerEventSessionEnded[];
}

namespace kelvar {

class TrackerManager;
using TrackerManagerRef = std::shared_ptr<TrackerManager>;

/// The one tracker that everybody talks to: passes each call on to its trackers, in their order,
/// and tells them who the user is.
///
/// It gives the installation an anonymous identity, a random UUID, and keeps it in the store under
/// `identifier` + ".uuid". An e-mail address is read from `identifier` + ".email" at the start, but
/// written under "io.kelvarlabs.tracker.email": one that was set is not restored.
///
/// Calls that it passes on throw `UnrecognizedOperation` when none of its trackers understands
/// them, and so always when it has none. What a tracker throws ends here, in a log line: neither
/// the caller nor the other trackers suffer from it. `aliasId` is not passed on. On the main thread
/// only.
class KELVAR_EXPORT TrackerManager : public Tracker, public SuperPropertiesMerging {
 public:
  static const ClassInfo& theClass();
  const ClassInfo& classInfo() const override { return theClass(); }

  /// The manager of this process: the last that `setAsSharedInstance` was called on, otherwise one
  /// without trackers. Safe from any thread.
  static TrackerManagerRef sharedInstance();
  void setAsSharedInstance();

  /// With a store over the user's settings.
  TrackerManager(const TrackerList& trackers, const QString& identifier);
  TrackerManager(const TrackerList& trackers, TrackerPersisterRef persister,
                 const QString& identifier);

  /// Not stored.
  void setUuid(const QString& uuid) override;
  /// Stored, unless it is null.
  void setEmail(const QString& email) override;

  void track(const QString& name, const Properties& properties) override;
  void timedTrackerEventStarted(TimedTracker& timedTracker, const QString& name) override;
  void timedTrackerEventFinished(TimedTracker& timedTracker, const TimedEventRef& event) override;
  void setSuperProperties(const SharedProperties& properties) override;
  void addSuperProperties(const QVariantMap& properties) override;
  /// The trackers' address alone changes, until the manager's uuid or e-mail is set again.
  void identifyEmail(const QString& email) override;
  void aliasFromUUIDTo(const QString& newId) override;

  /// Tells every tracker the uuid, then every tracker the e-mail address.
  void configureChild();

  TrackerList allTrackers() const { return trackers_; }
  const TrackerList& trackers() const { return trackers_; }
  /// A list that has the manager itself in it, or in one of its managers, is refused with a log
  /// line.
  void setTrackers(const TrackerList& trackers);
  TrackerPersisterRef persister() const { return persister_; }
  void setPersister(const TrackerPersisterRef& persister) { persister_ = persister; }
  QString identifier() const { return identifier_; }
  void setIdentifier(const QString& identifier) { identifier_ = identifier; }

 private:
  template <class Interface, class Operation, class... Arguments>
  void broadcast(Operation Interface::*operation, const Arguments&... arguments) const;

  TrackerPersisterRef persister_;
  TrackerList trackers_;
  QString identifier_;
};

}  // namespace kelvar
