#pragma once

#include <QVariantMap>

#include "runtime/Object.h"

namespace kelvar {

/// A map from strings with an identity, which archives keep. Its entries are what it has by key.
class KELVAR_EXPORT MutableDictionary : public Object {
 public:
  explicit MutableDictionary(QVariantMap values = {}) : values_(std::move(values)) {}
  ~MutableDictionary() override;
  static const ClassInfo& theClass();
  const ClassInfo& classInfo() const override { return theClass(); }

  const QVariantMap& values() const { return values_; }
  void setValues(const QVariantMap& values) { values_ = values; }

  QVariant valueForKey(const QString& key) const override { return values_.value(key); }
  /// None removes the entry.
  bool setValueForKey(const QVariant& value, const QString& key) override;

 private:
  QVariantMap values_;
};

}  // namespace kelvar
