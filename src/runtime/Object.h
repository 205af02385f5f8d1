#pragma once

#include <QString>
#include <QVariant>
#include <memory>

#include "platform/Export.h"

namespace kelvar {

class Object;
using ObjectRef = std::shared_ptr<Object>;

/// What is shared by reference and reached by key. Derived classes answer for their own keys and
/// leave the others to their base.
class KELVAR_EXPORT Object {
 public:
  virtual ~Object();

  /// The value under `key`; invalid when there is no such key. Objects come as `ObjectRef`.
  virtual QVariant valueForKey(const QString& key) const;

  /// The value at the end of keys joined by dots, each looked up in what the one before gave.
  virtual QVariant valueForKeyPath(const QString& keyPath) const;

  /// One line for logs and people.
  virtual QString description() const;
};

/// Looks up a dotted path in an object, a map or a list. A list gives the list of what its
/// elements give, null (`nullptr`) for an element that gives nothing. Anything else has no keys.
KELVAR_EXPORT QVariant valueForKeyPath(const QVariant& value, const QString& keyPath);

}  // namespace kelvar
