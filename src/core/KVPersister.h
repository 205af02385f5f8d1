#pragma once

#include "platform/UserDefaults.h"
#include "runtime/Object.h"

namespace kelvar {

/// A key-value store over the user's settings. It holds nothing itself: any two persisters see the
/// same values.
///
/// Keys are used verbatim, and everything is kept in one file: write them out in full, as in
/// "io.kelvarlabs.kelvar.servermessage". A write is on the disk when the call returns. Each call is
/// atomic, from any thread; reading a value, changing it and writing it back is not, and of two
/// callers that do so at once, one may lose its change. Failures are logged; see `UserDefaults`.
class KELVAR_EXPORT KVPersister : public Object {
 public:
  static const ClassInfo& theClass();
  const ClassInfo& classInfo() const override { return theClass(); }

  /// `value` is of a property list. Any other value is refused, and the old one stays.
  virtual void setObject(const QVariant& value, const QString& key);

  /// What is stored under `key`; invalid when nothing is.
  virtual QVariant objectForKey(const QString& key) const;

  virtual void removeObjectForKey(const QString& key);
};

using KVPersisterRef = std::shared_ptr<KVPersister>;

}  // namespace kelvar
