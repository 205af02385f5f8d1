#pragma once

#include <QDateTime>
#include <memory>

#include "archive/HRCoder.h"
#include "archive/MutableArray.h"
#include "archive/MutableData.h"
#include "archive/MutableDictionary.h"
#include "archive/MutableString.h"
#include "platform/Values.h"
#include "runtime/ClassInfo.h"

namespace kelvar {

/// Building blocks of graphs in tests.

inline QVariant boxed(const ObjectRef& object) { return QVariant::fromValue(object); }

inline auto newMap(const QVariantMap& values = {}) {
  return std::make_shared<MutableDictionary>(values);
}
inline auto newList(const QVariantList& values = {}) {
  return std::make_shared<MutableArray>(values);
}

/// Null if it has another class.
template <class T>
std::shared_ptr<T> as(const QVariant& value) {
  return fromVariant<std::shared_ptr<T>>(value).value_or(nullptr);
}

/// Clears all reachable containers, so that cycles are released.
inline void takeApart(const QVariant& root) {
  QVariantList waiting{root};
  while (!waiting.isEmpty()) {
    const QVariant value = waiting.takeLast();
    if (const auto list = as<MutableArray>(value)) {
      waiting += list->values();
      list->setValues({});
    } else if (const auto map = as<MutableDictionary>(value)) {
      waiting += map->values().values();
      map->setValues({});
    }
  }
}

}  // namespace kelvar
