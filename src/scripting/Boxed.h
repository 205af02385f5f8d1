#pragma once

#include <optional>

#include "runtime/Object.h"

namespace kelvar {

/// A plain value that scripts see as an object of a class: an image, a URL, a path.
class Boxed : public Object {
 public:
  /// The value that operations take instead of the object.
  virtual QVariant value() const = 0;
  /// The memory that the value uses, so that the engine collects garbage in time.
  virtual size_t bytes() const { return 0; }

  /// The value as a new object; null for a type that is not boxed.
  static std::shared_ptr<Boxed> box(const QVariant& value);
  /// The same for equal values, if scripts can tell that they are the same: a hash.
  static std::optional<size_t> identityOf(const QVariant& value);
  /// The class of boxed values of this type; null for a type that is not boxed.
  static const ClassInfo* classFor(QMetaType type);
};

}  // namespace kelvar
