#pragma once

#include <QVariant>
#include <stdexcept>

#include "pixels/Result.h"
#include "platform/Export.h"

namespace kelvar {

/// Fails for a key that is none and for a value that is no property list. The error names the key
/// and the place within the value: "the value for a.b cannot be stored: list[2].x is nil".
KELVAR_EXPORT Result<void> checkStorable(const QVariant& value, const QString& key);

/// How a store's class describes `setObject:forKey:`: throws `std::invalid_argument` for a value
/// that cannot be stored, and removes the key for none.
template <class Store>
void setStorableObject(Store& store, const QVariant& value, const QString& key) {
  if (const Result<void> checked = checkStorable(value, key); !checked) {
    throw std::invalid_argument(checked.error().message);
  }
  if (value.isValid()) {
    store.setObject(value, key);
  } else {
    store.removeObjectForKey(key);
  }
}

}  // namespace kelvar
