#pragma once

#include <mutex>

#include "analytics/TrackerManager.h"
#include "core/KVPersister.h"

namespace kelvar {

/// What the script side makes first, and again whenever it wants something of the plug-in: it
/// records events, fetches the server's messages, and reaches the settings, over which it is a
/// store itself.
///
/// The first one in a process starts analytics: it builds the trackers, tells them what plug-in
/// this is and who uses it, records "Started" and makes its tracker the shared one. All later ones
/// only take that tracker; their other properties are none. On the main thread.
class KELVAR_EXPORT Kelvar : public KVPersister {
 public:
  static const ClassInfo& theClass();
  const ClassInfo& classInfo() const override { return theClass(); }

  /// How many were made in this process.
  static int32_t activateCount() { return activateCount_; }

  /// Throws `std::logic_error` when Info.plist lacks one of the keys that every event tells, which
  /// the build sees to.
  Kelvar();

  /// Returns the event's name.
  QString trackForEvent(const QString& event, const Properties& properties);

  /// Fetches the server's messages and merges them, later, on the network's thread, into the list
  /// of the persister that the object has then. The object lives until then. See `ServerMessages`.
  void loadServerNotification();

  TrackerManagerRef tracker() const { return tracker_; }
  void setTracker(const TrackerManagerRef& tracker) { tracker_ = tracker; }
  /// The plug-in's environment, which goes with every event.
  QString env() const { return env_; }
  void setEnv(const QString& env) { env_ = env; }
  QString pluginName() const { return pluginName_; }
  void setPluginName(const QString& name) { pluginName_ = name; }
  /// Where the messages are stored. With none, as in all but the first, they go nowhere. These two
  /// are safe from any thread.
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
