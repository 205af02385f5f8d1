#include "analytics/TrackerManager.h"

#include <QSet>
#include <QUuid>
#include <exception>
#include <functional>
#include <mutex>

#include "platform/Log.h"
#include "runtime/ClassInfo.h"
#include "util/Each.h"

const char TrackerManagerEventSessionEnded[] = "Session Ended";

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&TrackerManager::theClass);

std::mutex sharedMutex;

TrackerManagerRef& shared() {
  static TrackerManagerRef manager;
  return manager;
}

/// Null when the list has anything but trackers in it.
std::optional<TrackerList> trackersFrom(const QVariantList& objects) {
  TrackerList trackers;
  for (const QVariant& object : objects) {
    const auto tracker = fromVariant<TrackerRef>(object).value_or(nullptr);
    if (!tracker) return std::nullopt;
    trackers.append(tracker);
  }
  return trackers;
}

QVariantList trackersOf(const TrackerManager& manager) {
  QVariantList objects;
  for (const TrackerRef& tracker : manager.allTrackers()) objects.append(toVariant(tracker));
  return objects;
}

/// Each manager is looked into once, however often it is met.
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

QString newUuid() { return QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper(); }

}  // namespace

const ClassInfo& TrackerManager::theClass() {
  using This = TrackerManager;
  static const ClassInfo kClass =
      Description<This, Tracker>("TrackerManager")
          .classOperation("sharedInstance", &This::sharedInstance)
          .initialiser("initWithTrackers:identifier:",
                       [](const QVariantList& objects, const QString& identifier) {
                         const auto trackers = trackersFrom(objects);
                         return trackers ? std::make_shared<This>(*trackers, identifier) : nullptr;
                       })
          .initialiser("initWithTrackers:persister:identifier:",
                       [](const QVariantList& objects, const TrackerPersisterRef& persister,
                          const QString& identifier) {
                         const auto trackers = trackersFrom(objects);
                         return trackers ? std::make_shared<This>(*trackers, persister, identifier)
                                         : nullptr;
                       })
          .operation("setAsSharedInstance", &This::setAsSharedInstance)
          .operation("addSuperProperties:", &This::addSuperProperties)
          .operation("configureChild", &This::configureChild)
          .operation("allTrackers", trackersOf)
          .property("trackers", trackersOf,
                    [](This& self, const QVariantList& objects) {
                      if (const auto trackers = trackersFrom(objects)) self.setTrackers(*trackers);
                    })
          .property("persister", &This::persister, &This::setPersister)
          .property("identifier", &This::identifier, &This::setIdentifier);
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
void TrackerManager::broadcast(Operation Interface::*operation,
                               const Arguments&... arguments) const {
  if (!each(trackers_).respondsTo(operation)) throw UnrecognizedOperation();
  const TrackerList trackers = trackers_;
  for (const TrackerRef& tracker : trackers) {
    try {
      each(TrackerList{tracker}).forward(operation, arguments...);
    } catch (const std::exception& problem) {
      logLine(u"TrackerManager: %@", {QString::fromUtf8(problem.what())});
    }
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
  broadcast(&Tracker::track, name, properties);
}

void TrackerManager::timedTrackerEventStarted(TimedTracker& timedTracker, const QString& name) {
  broadcast(&Tracker::timedTrackerEventStarted, std::ref(timedTracker), name);
}

void TrackerManager::timedTrackerEventFinished(TimedTracker& timedTracker,
                                               const TimedEventRef& event) {
  broadcast(&Tracker::timedTrackerEventFinished, std::ref(timedTracker), event);
}

void TrackerManager::setSuperProperties(const SharedProperties& properties) {
  broadcast(&Tracker::setSuperProperties, properties);
}

void TrackerManager::addSuperProperties(const QVariantMap& properties) {
  broadcast(&SuperPropertiesMerging::addSuperProperties, properties);
}

void TrackerManager::identifyEmail(const QString& email) {
  broadcast(&Tracker::identifyEmail, email);
}

void TrackerManager::aliasFromUUIDTo(const QString& newId) {
  broadcast(&Tracker::aliasFromUUIDTo, newId);
}

void TrackerManager::configureChild() {
  if (trackers_.isEmpty()) return;
  broadcast(&Tracker::setUuid, uuid());
  broadcast(&Tracker::setEmail, email());
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
