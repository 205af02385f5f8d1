#pragma once

#include "runtime/Object.h"

namespace kelvar {

/// Where trackers keep who the user is: the user's settings, unless overridden. A write is on the
/// disk when the call returns; failures are logged. See `UserDefaults`.
class KELVAR_EXPORT TrackerPersister : public Object {
 public:
  static const ClassInfo& theClass();
  const ClassInfo& classInfo() const override { return theClass(); }

  virtual void setObject(const QVariant& value, const QString& key);
  /// Invalid when nothing is stored under `key`.
  virtual QVariant objectForKey(const QString& key) const;
  virtual void removeObjectForKey(const QString& key);
};

using TrackerPersisterRef = std::shared_ptr<TrackerPersister>;

}  // namespace kelvar
