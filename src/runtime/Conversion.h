#pragma once

#include <QVariant>
#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <optional>
#include <type_traits>

#include "runtime/Object.h"

namespace kelvar {

/// Conversion between `QVariant` and the types that described classes use.
///
/// Invalid and null values become the type's empty value: zero, false, a null string, a null
/// reference, an empty optional or list. Numbers and booleans convert to one another as in C; large
/// reals are clamped. Objects are passed as `ObjectRef` and must be of the right class. Weak
/// references are passed as shared ones, which the caller keeps alive. A list of objects has none
/// that is null. Everything else must be of the exact type.

template <class T>
struct Shared : std::false_type {};
template <class T>
struct Shared<std::shared_ptr<T>> : std::true_type {
  using Class = T;
};

template <class T>
struct Weak : std::false_type {};
template <class T>
struct Weak<std::weak_ptr<T>> : std::true_type {};

template <class T>
struct Optional : std::false_type {};
template <class T>
struct Optional<std::optional<T>> : std::true_type {
  using Value = T;
};

/// A list of references to objects.
template <class T>
struct ObjectList : std::false_type {};
template <class T>
struct ObjectList<QList<std::shared_ptr<T>>> : std::is_base_of<Object, T> {
  using Class = T;
};

inline bool isNothing(const QVariant& value) {
  return !value.isValid() || value.typeId() == QMetaType::Nullptr;
}

inline bool isNumber(const QVariant& value) {
  switch (value.typeId()) {
    case QMetaType::Bool:
    case QMetaType::Char:
    case QMetaType::SChar:
    case QMetaType::UChar:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Long:
    case QMetaType::ULong:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Float:
    case QMetaType::Double:
      return true;
    default:
      return false;
  }
}

inline bool isReal(const QVariant& value) {
  return value.typeId() == QMetaType::Double || value.typeId() == QMetaType::Float;
}

/// The real truncated toward zero and clamped to 64 signed bits; 0 for NaN.
inline int64_t integerFromReal(double real) {
  if (std::isnan(real)) return 0;
  if (real >= 0x1p63) return std::numeric_limits<int64_t>::max();
  return real < -0x1p63 ? std::numeric_limits<int64_t>::min() : int64_t(real);
}

/// For values that satisfy `isNumber`.
template <class T>
T numberFrom(const QVariant& value) {
  if constexpr (std::is_same_v<T, bool>) {
    return value.toBool();
  } else if constexpr (std::is_floating_point_v<T>) {
    return T(value.toDouble());
  } else if (!isReal(value)) {
    return value.typeId() == QMetaType::ULongLong || value.typeId() == QMetaType::ULong
               ? T(value.toULongLong())
               : T(value.toLongLong());
  } else {
    const double real = value.toDouble();
    if (std::is_same_v<T, uint64_t> && real >= 0x1p63) {
      return real >= 0x1p64 ? std::numeric_limits<T>::max() : T(real);
    }
    const int64_t whole = integerFromReal(real);
    if constexpr (std::is_signed_v<T>) {
      using Limits = std::numeric_limits<T>;
      return T(std::clamp<int64_t>(whole, Limits::min(), Limits::max()));
    }
    return T(whole);
  }
}

/// Empty when the value cannot be converted.
template <class T>
std::optional<T> fromVariant(const QVariant& value) {
  if constexpr (std::is_same_v<T, QVariant>) {
    return value;
  } else if (isNothing(value)) {
    return T{};
  } else if constexpr (Optional<T>::value) {
    const auto inner = fromVariant<typename Optional<T>::Value>(value);
    return inner ? std::optional<T>(inner) : std::nullopt;
  } else if constexpr (std::is_arithmetic_v<T>) {
    return isNumber(value) ? std::optional<T>(numberFrom<T>(value)) : std::nullopt;
  } else if constexpr (std::is_same_v<T, QStringList>) {
    if (value.typeId() == QMetaType::QStringList) return value.toStringList();
    if (value.typeId() != QMetaType::QVariantList) return std::nullopt;
    QStringList strings;
    for (const QVariant& element : value.toList()) {
      if (element.typeId() != QMetaType::QString) return std::nullopt;
      strings.append(element.toString());
    }
    return strings;
  } else if constexpr (ObjectList<T>::value) {
    if (value.typeId() != QMetaType::QVariantList) return std::nullopt;
    T objects;
    for (const QVariant& element : value.toList()) {
      const auto object = fromVariant<typename T::value_type>(element);
      if (!object || !*object) return std::nullopt;
      objects.append(*object);
    }
    return objects;
  } else if constexpr (Weak<T>::value) {
    const auto shared = fromVariant<std::shared_ptr<typename T::element_type>>(value);
    return shared ? std::optional<T>(*shared) : std::nullopt;
  } else {
    if constexpr (Shared<T>::value) {
      using Class = typename Shared<T>::Class;
      if constexpr (std::is_base_of_v<Object, Class>) {
        if (value.metaType() != QMetaType::fromType<ObjectRef>()) return std::nullopt;
        const auto object = value.value<ObjectRef>();
        auto wanted = std::dynamic_pointer_cast<Class>(object);
        return object && !wanted ? std::nullopt : std::optional<T>(std::move(wanted));
      }
    }
    if (value.metaType() != QMetaType::fromType<T>()) return std::nullopt;
    return value.value<T>();
  }
}

/// Null strings and references become invalid. Whole numbers are `int`, `qlonglong` or
/// `qulonglong`.
template <class T>
QVariant toVariant(const T& value) {
  if constexpr (std::is_same_v<T, QVariant>) {
    return value;
  } else if constexpr (Optional<T>::value) {
    return value ? toVariant(*value) : QVariant();
  } else if constexpr (std::is_integral_v<T> && !std::is_same_v<T, bool>) {
    if constexpr (sizeof(T) < sizeof(int32_t) || std::is_same_v<T, int32_t>) return int32_t(value);
    if constexpr (std::is_same_v<T, uint64_t>) return qulonglong(value);
    return qlonglong(value);
  } else if constexpr (std::is_same_v<T, QString>) {
    return value.isNull() ? QVariant() : QVariant(value);
  } else if constexpr (ObjectList<T>::value) {
    QVariantList objects;
    for (const auto& object : value) objects.append(toVariant(object));
    return objects;
  } else if constexpr (Weak<T>::value) {
    return toVariant(value.lock());
  } else {
    if constexpr (Shared<T>::value) {
      if (!value) return {};
      if constexpr (std::is_base_of_v<Object, typename Shared<T>::Class>) {
        return QVariant::fromValue<ObjectRef>(value);
      }
    }
    return QVariant::fromValue(value);
  }
}

/// The argument of a delegate's or a protocol's operation as a value. An object that is not shared
/// becomes none.
template <class T>
QVariant argumentToVariant(const T& argument) {
  if constexpr (std::is_base_of_v<Object, T>) {
    return toVariant(std::const_pointer_cast<Object>(
        static_cast<const Object&>(argument).weak_from_this().lock()));
  } else {
    return toVariant(argument);
  }
}

}  // namespace kelvar
