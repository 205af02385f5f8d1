#pragma once

#include "platform/store/UserDefaults.h"
#include "runtime/Object.h"

namespace kelvar {

/// A key-value store in the user's settings. It has no state of its own: all persisters see the
/// same values.
///
/// Keys are used verbatim and share one file, so write them out in full, such as
/// "io.kelvarlabs.kelvar.servermessage". A write is on disk when the call returns. Each call is
/// atomic and thread-safe. Reading a value, changing it and writing it back is not atomic: of two
/// concurrent callers, one may lose its change. Failures are logged. See `UserDefaults`. A store
/// that a script implements is used on the main thread alone.
class KELVAR_EXPORT KVPersister : public Object {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  /// `value` must be a property-list value. Any other value is rejected, and the old one is kept.
  virtual void setObject(const QVariant& value, const QString& key);

  /// The value stored under `key`; invalid if there is none.
  virtual QVariant objectForKey(const QString& key) const;

  virtual void removeObjectForKey(const QString& key);

  /// Whether any thread may use the store, or the main thread alone.
  virtual bool isThreadSafe() const { return true; }
};

using KVPersisterRef = std::shared_ptr<KVPersister>;

}  // namespace kelvar
