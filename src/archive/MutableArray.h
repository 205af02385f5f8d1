#pragma once

#include <QVariantList>

#include "runtime/Object.h"

namespace kelvar {

/// A list with an identity, which archives keep.
class KELVAR_EXPORT MutableArray : public Object {
 public:
  explicit MutableArray(QVariantList values = {}) : values_(std::move(values)) {}
  ~MutableArray() override;
  static const ClassInfo& theClass();
  const ClassInfo& classInfo() const override { return theClass(); }

  const QVariantList& values() const { return values_; }
  void setValues(const QVariantList& values) { values_ = values; }
  void append(const QVariant& value) { values_.append(value); }
  /// `index` must be that of an element.
  void replace(qsizetype index, const QVariant& value) { values_[index] = value; }

  /// What the elements give for the key, null where one gives nothing.
  QVariant valueForKey(const QString& key) const override;

 private:
  QVariantList values_;
};

}  // namespace kelvar
