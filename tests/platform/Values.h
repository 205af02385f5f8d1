#pragma once

#include <QDateTime>
#include <QVariant>
#include <algorithm>
#include <cmath>

namespace kelvar {

/// A null string differs from an empty one.
inline bool identicalTexts(const QString& a, const QString& b) {
  return a == b && a.isNull() == b.isNull();
}

/// Equal in type and value, to the last bit: true is not 1, 1 is not 1.0, 0.0 is not -0.0.
inline bool identical(const QVariant& a, const QVariant& b) {
  if (a.metaType() != b.metaType()) return false;
  if (a.typeId() == QMetaType::QVariantMap) {
    const QVariantMap left = a.toMap(), right = b.toMap();
    const QStringList leftKeys = left.keys(), rightKeys = right.keys();
    return std::equal(leftKeys.begin(), leftKeys.end(), rightKeys.begin(), rightKeys.end(),
                      identicalTexts) &&
           std::equal(left.begin(), left.end(), right.begin(), identical);
  }
  if (a.typeId() == QMetaType::QVariantList) {
    const QVariantList left = a.toList(), right = b.toList();
    return std::equal(left.begin(), left.end(), right.begin(), right.end(), identical);
  }
  if (a.typeId() == QMetaType::Double || a.typeId() == QMetaType::Float) {
    const double left = a.toDouble(), right = b.toDouble();
    return (std::isnan(left) && std::isnan(right)) ||
           (left == right && std::signbit(left) == std::signbit(right));
  }
  if (a.typeId() == QMetaType::QString) return identicalTexts(a.toString(), b.toString());
  return a == b;
}

/// `levels` nested lists.
inline QVariant nested(int levels) {
  QVariant value = QVariantList();
  for (int i = 1; i < levels; ++i) value = QVariantList{value};
  return value;
}

}  // namespace kelvar
