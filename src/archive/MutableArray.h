#pragma once

#include <QVariantList>

#include "runtime/Object.h"

namespace kelvar {

/// A list with an identity, which archives preserve.
class KELVAR_EXPORT MutableArray : public Object {
 public:
  explicit MutableArray(QVariantList values = {}) : values_(std::move(values)) {}
  ~MutableArray() override;
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  const QVariantList& values() const { return values_; }
  void setValues(const QVariantList& values) { values_ = values; }
  void append(const QVariant& value) { values_.append(value); }
  /// `index` must be in range.
  void replace(qsizetype index, const QVariant& value) { values_[index] = value; }

  /// The elements' values for the key, null for an element without one.
  QVariant valueForKey(const QString& key) const override;

 private:
  QVariantList values_;
};

}  // namespace kelvar
