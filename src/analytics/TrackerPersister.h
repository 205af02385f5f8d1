#pragma once

#include "runtime/Object.h"

namespace kelvar {

/// Stores identities for trackers: in the user's settings, unless overridden. A write is on the
/// disk when the call returns. Failures are logged. See `UserDefaults`.
class KELVAR_EXPORT TrackerPersister : public Object {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  virtual void setObject(const QVariant& value, const QString& key);
  /// Invalid if nothing is stored under `key`.
  virtual QVariant objectForKey(const QString& key) const;
  virtual void removeObjectForKey(const QString& key);
};

using TrackerPersisterRef = std::shared_ptr<TrackerPersister>;

}  // namespace kelvar
