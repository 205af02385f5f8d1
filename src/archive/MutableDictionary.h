#pragma once

#include <QVariantMap>

#include "runtime/Object.h"

namespace kelvar {

/// A map from strings with an identity, which archives preserve. `valueForKey` and `setValueForKey`
/// access its entries.
class KELVAR_EXPORT MutableDictionary : public Object {
 public:
  explicit MutableDictionary(QVariantMap values = {}) : values_(std::move(values)) {}
  ~MutableDictionary() override;
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  const QVariantMap& values() const { return values_; }
  void setValues(const QVariantMap& values) { values_ = values; }

  QVariant valueForKey(const QString& key) const override { return values_.value(key); }
  /// An invalid value removes the entry.
  bool setValueForKey(const QVariant& value, const QString& key) override;

 private:
  QVariantMap values_;
};

}  // namespace kelvar
