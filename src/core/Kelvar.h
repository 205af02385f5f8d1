#pragma once

#include <mutex>

#include "analytics/TrackerManager.h"
#include "core/KVPersister.h"

namespace kelvar {

/// The main object of a plug-in. Scripts create one first, and again whenever they need it: it
/// records events, fetches the server's messages, and is itself a store in the settings.
///
/// The first one in a process starts analytics: it creates the trackers, tells them about the
/// plug-in and the user, records "Started" and shares its tracker. Later ones only use that
/// tracker; their other properties are empty. Use on the main thread.
class KELVAR_EXPORT Kelvar : public KVPersister {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  /// Number of instances created in this process.
  static int32_t activateCount() { return activateCount_; }

  /// Throws `std::logic_error` if Info.plist lacks a key that every event contains. The build
  /// provides these.
  Kelvar();

  /// Returns the event's name.
  QString trackForEvent(const QString& event, const Properties& properties);

  /// Fetches the server's messages. Later, on the network thread, merges them into the list of the
  /// persister that the object has at that time. The object lives until then. See `ServerMessages`.
  void loadServerNotification();

  TrackerManagerRef tracker() const { return tracker_; }
  void setTracker(const TrackerManagerRef& tracker) { tracker_ = tracker; }
  /// The plug-in's environment, which is sent with every event.
  QString env() const { return env_; }
  void setEnv(const QString& env) { env_ = env; }
  QString pluginName() const { return pluginName_; }
  void setPluginName(const QString& name) { pluginName_ = name; }
  /// The store for messages. Null, as in all instances but the first, drops them. Getter and setter
  /// are thread-safe.
  KVPersisterRef persister() const;
  void setPersister(const KVPersisterRef& persister);

 private:
  friend class KelvarTest;

  void start();
  void identifyUser(QVariantMap* superProperties);

  static inline int32_t activateCount_ = 0;

  TrackerManagerRef tracker_;
  QString env_;
  QString pluginName_;
  mutable std::mutex persisterMutex_;
  KVPersisterRef persister_;
};

using KelvarRef = std::shared_ptr<Kelvar>;

}  // namespace kelvar
