#include "analytics/TrackerManager.h"

#include <QSet>
#include <QUuid>
#include <exception>
#include <functional>
#include <mutex>

#include "platform/Log.h"
#include "runtime/ClassInfo.h"
#include "runtime/Implementation.h"
#include "util/Each.h"

const char TrackerManagerEventSessionEnded[] = "Session Ended";

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&TrackerManager::staticClassInfo);

std::mutex sharedMutex;

TrackerManagerRef& shared() {
  static TrackerManagerRef manager;
  return manager;
}

/// Each manager is searched once, however often it occurs.
bool reaches(const TrackerList& trackers, const TrackerManager* manager,
             QSet<const Tracker*>* seen) {
  for (const TrackerRef& tracker : trackers) {
    if (tracker.get() == manager) return true;
    if (seen->contains(tracker.get())) continue;
    seen->insert(tracker.get());
    const auto* const nested = dynamic_cast<const TrackerManager*>(tracker.get());
    if (nested && reaches(nested->trackers(), manager, seen)) return true;
  }
  return false;
}

/// Whether the tracker is a script's object without the operation.
bool lacks(const Tracker& tracker, const char* selector) {
  const auto* const scripted = dynamic_cast<const Implemented*>(&tracker);
  return scripted && !scripted->implementation()->respondsTo(QString::fromLatin1(selector));
}

template <class Call>
void attempt(const Call& call) {
  try {
    call();
  } catch (const std::exception& problem) {
    logLine(u"TrackerManager: %@", {QString::fromUtf8(problem.what())});
  }
}

QString newUuid() { return QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper(); }

}  // namespace

const ClassInfo& TrackerManager::staticClassInfo() {
  using This = TrackerManager;
  static const ClassInfo kClass =
      ClassInfoBuilder<This, Tracker>("TrackerManager")
          .classOperation("sharedInstance", &This::sharedInstance,
                          "Returns the manager of this process.")
          .initializer(
              "init", [] { return std::make_shared<This>(); },
              "Creates a manager without trackers, a store or identities.")
          .initializer(
              "initWithTrackers:identifier:",
              [](const TrackerList& trackers, const QString& identifier) {
                return std::make_shared<This>(trackers, identifier);
              },
              "Creates a manager over the trackers that keeps identities in the user's settings.")
          .initializer(
              "initWithTrackers:persister:identifier:",
              [](const TrackerList& trackers, const TrackerPersisterRef& persister,
                 const QString& identifier) {
                return std::make_shared<This>(trackers, persister, identifier);
              },
              "Creates a manager over the trackers that keeps identities in this store, under keys "
              "that begin with the identifier.")
          .operation("setAsSharedInstance", &This::setAsSharedInstance,
                     "Makes this the manager of the process.")
          .operation("addSuperProperties:", &This::addSuperProperties,
                     "Adds to the properties that are recorded with every event; new values "
                     "replace old ones.")
          .operation("configureChild", &This::configureChild,
                     "Passes the uuid and the email address on to every tracker.")
          .operation("allTrackers", &This::allTrackers,
                     "Returns the trackers in the order of their calls.")
          .property("trackers", &This::trackers, &This::setTrackers,
                    "The trackers in the order of their calls.")
          .property("persister", &This::persister, &This::setPersister,
                    "The store for the user's identities.")
          .property("identifier", &This::identifier, &This::setIdentifier,
                    "The prefix of the keys in the store.");
  return kClass;
}

TrackerManagerRef TrackerManager::sharedInstance() {
  const std::scoped_lock lock(sharedMutex);
  if (!shared()) shared() = std::make_shared<TrackerManager>(TrackerList(), QStringLiteral(""));
  return shared();
}

void TrackerManager::setAsSharedInstance() {
  auto self = std::static_pointer_cast<TrackerManager>(shared_from_this());
  const std::scoped_lock lock(sharedMutex);
  shared().swap(self);  // The last one ends after the lock.
}

TrackerManager::TrackerManager(const TrackerList& trackers, const QString& identifier)
    : TrackerManager(trackers, std::make_shared<TrackerPersister>(), identifier) {}

TrackerManager::TrackerManager(const TrackerList& trackers, TrackerPersisterRef persister,
                               const QString& identifier)
    : persister_(std::move(persister)), identifier_(identifier) {
  const QString key = identifier_ + QStringLiteral(".uuid");
  QString uuid = persister_ ? persister_->objectForKey(key).toString() : QString();
  if (uuid.isEmpty()) {
    uuid = newUuid();
    if (persister_) persister_->setObject(uuid, key);
  }
  TrackerManager::setUuid(uuid);
  const QString emailKey = identifier_ + QStringLiteral(".email");
  TrackerManager::setEmail(persister_ ? persister_->objectForKey(emailKey).toString() : QString());
  trackers_ = trackers;
  configureChild();
}

template <class Interface, class Operation, class... Arguments>
void TrackerManager::broadcast(const char* selector, Operation Interface::*operation,
                               const Arguments&... arguments) const {
  TrackerList receivers = trackers_;
  receivers.removeIf([&](const TrackerRef& tracker) {
    return !each(TrackerList{tracker}).respondsTo(operation) || lacks(*tracker, selector);
  });
  if (receivers.isEmpty()) throw UnrecognizedOperation();
  for (const TrackerRef& tracker : receivers) {
    attempt([&] { each(TrackerList{tracker}).forward(operation, arguments...); });
  }
}

void TrackerManager::setUuid(const QString& uuid) {
  Tracker::setUuid(uuid);
  configureChild();
}

void TrackerManager::setEmail(const QString& email) {
  Tracker::setEmail(email);
  if (persister_ && !email.isNull()) {
    persister_->setObject(email, QStringLiteral("io.kelvarlabs.tracker.email"));
  }
  configureChild();
}

void TrackerManager::track(const QString& name, const Properties& properties) {
  broadcast("track:properties:", &Tracker::track, name, properties);
}

void TrackerManager::timedTrackerEventStarted(TimedTracker& timedTracker, const QString& name) {
  broadcast("timedTracker:eventStarted:", &Tracker::timedTrackerEventStarted,
            std::ref(timedTracker), name);
}

void TrackerManager::timedTrackerEventFinished(TimedTracker& timedTracker,
                                               const TimedEventRef& event) {
  broadcast("timedTracker:eventFinished:", &Tracker::timedTrackerEventFinished,
            std::ref(timedTracker), event);
}

void TrackerManager::setSuperProperties(const SharedProperties& properties) {
  broadcast("setSuperProperties:", &Tracker::setSuperProperties, properties);
}

void TrackerManager::addSuperProperties(const QVariantMap& properties) {
  broadcast("addSuperProperties:", &SuperPropertiesMerging::addSuperProperties, properties);
}

void TrackerManager::identifyEmail(const QString& email) {
  broadcast("identifyEmail:", &Tracker::identifyEmail, email);
}

void TrackerManager::aliasFromUUIDTo(const QString& newId) {
  broadcast("aliasFromUUIDTo:", &Tracker::aliasFromUUIDTo, newId);
}

void TrackerManager::configureChild() {
  const TrackerList trackers = trackers_;
  for (const TrackerRef& tracker : trackers) attempt([&] { tracker->setUuid(uuid()); });
  for (const TrackerRef& tracker : trackers) attempt([&] { tracker->setEmail(email()); });
}

void TrackerManager::setTrackers(const TrackerList& trackers) {
  QSet<const Tracker*> seen;
  if (reaches(trackers, this, &seen)) {
    return logLine(
        u"TrackerManager: a manager cannot be among its own trackers, which stay as they were");
  }
  trackers_ = trackers;
}

}  // namespace kelvar
