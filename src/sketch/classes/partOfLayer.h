#pragma once

#include "sketch/classes/LayerClasses.h"

namespace kelvar {

/// Accessors of an object in a layer's JSON, for the descriptions of classes. What is not there is
/// made when the part is changed.
template <Key key, const ClassInfo& (*info)()>
ModelPartRef partOfLayer(const SketchLayer& self) {
  return std::make_shared<ModelPart>(info(), refTo(self),
                                     ModelPart::Place() / std::string(key.text));
}
/// Nil for none.
template <Key key, const ClassInfo& (*info)()>
ModelPartRef partOfLayerOrNil(const SketchLayer& self) {
  return get(self.node().json(), key.text).is_object() ? partOfLayer<key, info>(self) : nullptr;
}
/// Nil removes it.
template <Key key, const ClassInfo& (*info)()>
void setPartOfLayer(SketchLayer& self, const ModelPartRef& given) {
  if (!given) {
    self.edit().change().erase(key.text);
    return;
  }
  SketchJson copy = partOfClass(given, info(), key.text).json();
  self.edit().change()[key.text] = std::move(copy);
}

/// Creates a part that is in no layer.
template <const ClassInfo& (*info)(), SketchJson (*json)()>
ModelPartRef newPart() {
  return std::make_shared<ModelPart>(info(), json());
}

}  // namespace kelvar
