#pragma once

#include "sketch/classes/SymbolOverrides.h"

namespace kelvar {

/// Something that an instance can show differently from its symbol, with its values. `currentValue`
/// follows changes of the instance; the rest is as it was when the list was made.
class MSAvailableOverride : public Object {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  MSAvailableOverride(SketchLayerRef instance, SymbolOverrides::Place place)
      : instance_(std::move(instance)), place_(std::move(place)) {}
  static QVariantList of(const SketchLayer& instance);

  std::shared_ptr<MSOverridePoint> overridePoint() const;
  /// The layer of the symbol.
  SketchLayerRef affectedLayer() const { return place_.layer; }
  /// A text, the identifier of a symbol, or an image.
  QVariant currentValue() const;
  QVariant defaultValue() const { return place_.value; }
  bool hasOverride() const;

 private:
  const SketchLayerRef instance_;
  const SymbolOverrides::Place place_;
};

}  // namespace kelvar
