#pragma once

#include <QMetaType>
#include <QVariant>
#include <memory>

#include "runtime/Conversion.h"

namespace kelvar {

class ClassInfo;
class DelegateInfo;

/// The type of a parameter or a result, for converting values and for documentation.
struct ValueType {
  /// `void` for no value, `QVariant` for any value, `ObjectRef` for objects, a shared pointer for
  /// delegates.
  QMetaType type;
  /// For objects: the class, or a base of it.
  const ClassInfo& (*staticClassInfo)() = nullptr;
  /// For lists of objects: the class of the elements, or a base of it.
  const ClassInfo& (*staticElementInfo)() = nullptr;
  /// For delegates.
  const DelegateInfo& (*staticDelegateInfo)() = nullptr;
  /// Whether `fromVariant` accepts the value. Null for `void`.
  bool (*fits)(const QVariant& value) = nullptr;
};

template <class T>
concept HasClass = std::is_base_of_v<Object, T> && requires {
  T::staticClassInfo();
};
template <class T>
concept HasDelegateInfo = requires {
  T::staticDelegateInfo();
};

/// `T` without reference and qualifiers. An object type becomes a reference to it, and an optional
/// its value type.
template <class T>
ValueType valueType() {
  if constexpr (std::is_void_v<T>) {
    return ValueType{.type = QMetaType::fromType<void>()};
  } else if constexpr (HasClass<T>) {
    return valueType<std::shared_ptr<T>>();
  } else if constexpr (Optional<T>::value) {
    ValueType type = valueType<typename Optional<T>::Value>();
    type.fits = [](const QVariant& value) { return fromVariant<T>(value).has_value(); };
    return type;
  } else if constexpr (Weak<T>::value) {
    ValueType type = valueType<std::shared_ptr<typename T::element_type>>();
    if constexpr (HasDelegateInfo<typename T::element_type>) {
      type.staticDelegateInfo = &T::element_type::staticDelegateInfo;
    }
    return type;
  } else {
    ValueType type{.type = QMetaType::fromType<T>()};
    type.fits = [](const QVariant& value) { return fromVariant<T>(value).has_value(); };
    if constexpr (Shared<T>::value) {
      if constexpr (HasClass<typename T::element_type>) {
        type.type = QMetaType::fromType<ObjectRef>();
        type.staticClassInfo = &T::element_type::staticClassInfo;
      }
    } else if constexpr (ObjectList<T>::value) {
      type.type = QMetaType::fromType<QVariantList>();
      type.staticElementInfo = &ObjectList<T>::Class::staticClassInfo;
    }
    return type;
  }
}

}  // namespace kelvar
