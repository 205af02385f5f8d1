#pragma once

#include "analytics/SuperPropertiesMerging.h"
#include "analytics/Tracker.h"
#include "analytics/TrackerPersister.h"

extern "C" {

/// Name of the event that ends a session.
KELVAR_EXPORT extern const char TrackerManagerEventSessionEnded[];
}

namespace kelvar {

class TrackerManager;
using TrackerManagerRef = std::shared_ptr<TrackerManager>;

/// The tracker that everything else uses. Forwards each call to its trackers, in their order, and
/// tells them who the user is.
///
/// It gives the installation an anonymous identity, a random UUID, and stores it under `identifier`
/// + ".uuid". The email address is read from `identifier` + ".email" at the start but written to
/// "io.kelvarlabs.tracker.email", so an address that was set is not restored.
///
/// Forwarded calls throw `UnrecognizedOperation` if no tracker implements them, and therefore
/// always if there are no trackers. Exceptions from a tracker are logged and reach neither the
/// caller nor the other trackers. `aliasId` is not forwarded. Use on the main thread only.
class KELVAR_EXPORT TrackerManager : public Tracker, public SuperPropertiesMerging {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  /// The manager of this process: the last one on which `setAsSharedInstance` was called, or else
  /// one without trackers. Thread-safe.
  static TrackerManagerRef sharedInstance();
  void setAsSharedInstance();

  /// Without trackers, a store or identities.
  TrackerManager() = default;
  /// Stores identities in the user's settings.
  TrackerManager(const TrackerList& trackers, const QString& identifier);
  TrackerManager(const TrackerList& trackers, TrackerPersisterRef persister,
                 const QString& identifier);

  /// Not stored.
  void setUuid(const QString& uuid) override;
  /// Stored unless it is null.
  void setEmail(const QString& email) override;

  void track(const QString& name, const Properties& properties) override;
  void timedTrackerEventStarted(TimedTracker& timedTracker, const QString& name) override;
  void timedTrackerEventFinished(TimedTracker& timedTracker, const TimedEventRef& event) override;
  void setSuperProperties(const SharedProperties& properties) override;
  void addSuperProperties(const QVariantMap& properties) override;
  /// Changes only the trackers' address, until the manager's uuid or email is set again.
  void identifyEmail(const QString& email) override;
  void aliasFromUUIDTo(const QString& newId) override;

  /// Sets the uuid of every tracker, then the email address of every tracker.
  void configureChild();

  TrackerList allTrackers() const { return trackers_; }
  const TrackerList& trackers() const { return trackers_; }
  /// A list that contains the manager itself, directly or through another manager, is rejected with
  /// a log line.
  void setTrackers(const TrackerList& trackers);
  TrackerPersisterRef persister() const { return persister_; }
  void setPersister(const TrackerPersisterRef& persister) { persister_ = persister; }
  QString identifier() const { return identifier_; }
  void setIdentifier(const QString& identifier) { identifier_ = identifier; }

 private:
  template <class Interface, class Operation, class... Arguments>
  void broadcast(const char* selector, Operation Interface::*operation,
                 const Arguments&... arguments) const;

  TrackerPersisterRef persister_;
  TrackerList trackers_;
  QString identifier_;
};

}  // namespace kelvar
