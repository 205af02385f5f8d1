#pragma once

#include "runtime/Object.h"

namespace kelvar {

/// A plain value that scripts see as an object of a class: a picture, an address, a path.
class Boxed : public Object {
 public:
  /// What operations take in the object's place.
  virtual QVariant value() const = 0;
  /// What it takes in memory, so that the script's garbage is collected in time.
  virtual size_t bytes() const { return 0; }

  /// The value as an object; null when it is of no type that scripts know as a class.
  static ObjectRef box(const QVariant& value);
  /// The class as which scripts see values of this type; null for none.
  static const ClassInfo* classFor(QMetaType type);
};

}  // namespace kelvar
