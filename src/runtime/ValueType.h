#pragma once

#include <QMetaType>
#include <QVariant>
#include <memory>

#include "runtime/Conversion.h"

namespace kelvar {

class ClassInfo;
class DelegateInfo;

/// What a parameter takes or a result gives, for whoever converts values or writes it down.
struct ValueType {
  /// `void` for nothing, `QVariant` for any value, `ObjectRef` for objects, a shared pointer for
  /// delegates.
  QMetaType type;
  /// Of objects: the class that they are at least of.
  const ClassInfo& (*theClass)() = nullptr;
  /// Of delegates.
  const DelegateInfo& (*theDelegate)() = nullptr;
  /// Whether `fromVariant` takes the value. Null for nothing.
  bool (*fits)(const QVariant& value) = nullptr;
};

template <class T>
concept HasClass = std::is_base_of_v<Object, T> && requires {
  T::theClass();
};
template <class T>
concept HasDelegateInfo = requires {
  T::theDelegate();
};

/// `T` without references and qualifiers. An object itself stands for a reference to it, and what
/// is optional for its value.
template <class T>
ValueType valueType() {
  if constexpr (std::is_void_v<T>) {
    return {QMetaType::fromType<void>()};
  } else if constexpr (HasClass<T>) {
    return valueType<std::shared_ptr<T>>();
  } else if constexpr (Optional<T>::value) {
    ValueType type = valueType<typename Optional<T>::Value>();
    type.fits = [](const QVariant& value) { return fromVariant<T>(value).has_value(); };
    return type;
  } else if constexpr (Weak<T>::value) {
    ValueType type = valueType<std::shared_ptr<typename T::element_type>>();
    if constexpr (HasDelegateInfo<typename T::element_type>) {
      type.theDelegate = &T::element_type::theDelegate;
    }
    return type;
  } else {
    ValueType type{QMetaType::fromType<T>()};
    type.fits = [](const QVariant& value) { return fromVariant<T>(value).has_value(); };
    if constexpr (Shared<T>::value) {
      if constexpr (HasClass<typename T::element_type>) {
        type.type = QMetaType::fromType<ObjectRef>();
        type.theClass = &T::element_type::theClass;
      }
    }
    return type;
  }
}

}  // namespace kelvar
