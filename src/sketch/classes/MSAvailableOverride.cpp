#include "sketch/classes/MSAvailableOverride.h"

#include "runtime/ClassInfo.h"
#include "sketch/classes/LayerClasses.h"

namespace kelvar {
namespace {

using Self = MSAvailableOverride;

const ClassInfo::Registration kRegistered(&Self::staticClassInfo);

}  // namespace

const ClassInfo& MSAvailableOverride::staticClassInfo() {
  static const ClassInfo kClass =
      ClassInfoBuilder<Self>("MSAvailableOverride")
          .operation("overridePoint", &Self::overridePoint, "Returns what can differ.")
          .operation("affectedLayer", &Self::affectedLayer,
                     "Returns the layer of the symbol that shows it.")
          .operation("currentValue", &Self::currentValue,
                     "Returns what the instance shows: a text, the identifier of a symbol, or "
                     "image data.")
          .operation("defaultValue", &Self::defaultValue, "Returns what the symbol shows.")
          .operation("hasOverride", &Self::hasOverride,
                     "Returns whether the instance differs from the symbol.");
  return kClass;
}

QVariantList MSAvailableOverride::of(const SketchLayer& instance) {
  QVariantList overrides;
  for (const SymbolOverrides::Place& place : SymbolOverrides::places(instance)) {
    overrides.append(toVariant(std::make_shared<Self>(refTo(instance), place)));
  }
  return overrides;
}

std::shared_ptr<MSOverridePoint> MSAvailableOverride::overridePoint() const {
  return std::make_shared<MSOverridePoint>(place_.name);
}

QVariant MSAvailableOverride::currentValue() const {
  const QVariant value = SymbolOverrides::valueAt(*instance_, place_.name);
  return value.isValid() ? value : place_.value;
}

bool MSAvailableOverride::hasOverride() const {
  return SymbolOverrides::valueAt(*instance_, place_.name).isValid();
}

}  // namespace kelvar
