#pragma once

#include "sketch/classes/MSColor.h"
#include "sketch/classes/ModelPart.h"
#include "sketch/document/newStyle.h"

namespace kelvar {

/// The classes of a layer's style and of what it consists of. Instances are `ModelPart`s.

const ClassInfo& styleClass();
const ClassInfo& fillClass();
const ClassInfo& borderClass();
const ClassInfo& borderOptionsClass();
const ClassInfo& shadowClass();
const ClassInfo& innerShadowClass();
const ClassInfo& blurClass();
const ClassInfo& graphicsContextSettingsClass();
const ClassInfo& gradientClass();
const ClassInfo& gradientStopClass();

/// Gives the layer a style. A text looks as the style says, or stays as it is if that says nothing
/// about texts.
void assignStyle(SketchLayer& layer, SketchJson style);

/// A style's list of parts, such as "fills".
QVariantList partsIn(const ModelPart& part, const char* list, const ClassInfo& info);
/// Puts a new part at the end of such a list, which is made if there is none.
ModelPartRef appendPart(ModelPart& part, const char* list, const ClassInfo& info, SketchJson json);
/// Raises if there is no such part.
void removePart(ModelPart& part, const char* list, int index);

/// Accessors of a color.
template <Key key>
MSColorRef colorOf(const ModelPart& self) {
  const auto part =
      std::static_pointer_cast<ModelPart>(std::const_pointer_cast<Object>(self.shared_from_this()));
  return std::make_shared<MSColor>(
      get(self.json(), key.text), MSColor::Kind::Mutable,
      [part](const SketchJson& color) { part->change()[key.text] = color; });
}
template <Key key>
void setColorOf(ModelPart& self, const QVariant& color) {
  SketchJson json = MSColor::jsonFrom(color, key.text);
  self.change()[key.text] = std::move(json);
}

/// An accessor of a part within the part, which need not be there.
template <Key key, const ClassInfo& (*info)()>
ModelPartRef partOf(const ModelPart& self) {
  return ModelPart::within(info(), self, ModelPart::Place() / std::string(key.text));
}

}  // namespace kelvar
