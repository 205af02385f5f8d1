#include "sketch/classes/StyleClasses.h"

#include "runtime/raise.h"
#include "sketch/classes/SharedStyles.h"
#include "sketch/classes/TextAttributes.h"
#include "sketch/classes/TextContent.h"

namespace kelvar {
namespace {

using Self = ModelPart;
using M = Member<ModelPart>;

const ClassInfo::Registration kRegistered[] = {
    ClassInfo::Registration(&styleClass), ClassInfo::Registration(&borderOptionsClass),
    ClassInfo::Registration(&graphicsContextSettingsClass)};

template <Key list, const ClassInfo& (*info)()>
QVariantList parts(const Self& self) {
  return partsIn(self, list.text, info());
}

template <Key list, const ClassInfo& (*info)()>
QVariantList enabledParts(const Self& self) {
  QVariantList enabled = partsIn(self, list.text, info());
  enabled.removeIf([](const QVariant& part) {
    return !getBool(std::static_pointer_cast<ModelPart>(part.value<ObjectRef>())->json(),
                    "isEnabled", true);
  });
  return enabled;
}

template <Key list, const ClassInfo& (*info)()>
ModelPartRef firstEnabled(const Self& self) {
  const QVariantList enabled = enabledParts<list, info>(self);
  return enabled.isEmpty()
             ? nullptr
             : std::static_pointer_cast<ModelPart>(enabled.first().value<ObjectRef>());
}

template <Key list, const ClassInfo& (*info)()>
bool hasEnabled(const Self& self) {
  return !enabledParts<list, info>(self).isEmpty();
}

/// Replaces the list. The parts stand for their copies afterwards.
template <Key list, const ClassInfo& (*info)()>
void setParts(Self& self, const QVariantList& parts) {
  SketchJson copies = SketchJson::array();
  for (const QVariant& part : parts) {
    const auto given = std::dynamic_pointer_cast<ModelPart>(part.value<ObjectRef>());
    copies.push_back(partOfClass(given, info(), list.text).json());
  }
  self.change()[list.text] = std::move(copies);
}

template <Key list, const ClassInfo& (*info)()>
void add(Self& self, const ModelPartRef& part) {
  partOfClass(part, info(), "the style");
  if (!get(self.json(), list.text).is_array()) self.change()[list.text] = SketchJson::array();
  const size_t count = get(self.json(), list.text).size();
  part->moveInto(self, ModelPart::Place() / std::string(list.text) / count);
}

template <Key list>
void removeAt(Self& self, int index) {
  removePart(self, list.text, index);
}

template <Key list>
void removeAll(Self& self) {
  self.change()[list.text] = SketchJson::array();
}

ModelPartRef addNew(Self& self, int type) {
  switch (type) {
    case 0:
      return appendPart(self, "fills", fillClass(), newFill());
    case 1:
      return appendPart(self, "borders", borderClass(), newBorder());
    case 2:
      return appendPart(self, "shadows", shadowClass(), newShadow("shadow"));
    case 3:
      return appendPart(self, "innerShadows", innerShadowClass(), newShadow("innerShadow"));
    default:
      raise(QStringLiteral("there is no style part of type %1").arg(type));
  }
}

/// Documents hold one blur or, in later versions, a list of them.
ModelPartRef blur(const Self& self) {
  const bool isList = !getArray(self.json(), "blurs").empty();
  return ModelPart::within(blurClass(), self, ModelPart::Place(isList ? "/blurs/0" : "/blur"));
}

/// Of any of the lists.
void removeThisPart(Self& self, const ModelPartRef& part) {
  for (const char* list : {"fills", "borders", "shadows", "innerShadows"}) {
    const SketchJson& parts = getArray(self.json(), list);
    for (size_t i = 0; i < parts.size(); ++i) {
      if (part && &parts[i] == &part->json()) return removePart(self, list, int(i));
    }
  }
  raise(QStringLiteral("removeStylePart: takes a part of this style"));
}

ModelPartRef textStyle(const Self& self) {
  return get(self.json(), "textStyle").is_object() ? partOf<"textStyle", textStyleClass>(self)
                                                   : nullptr;
}

ModelPartRef copyOf(const Self& self) {
  SketchJson json = self.json();
  json.erase("do_objectID");
  auto copy = std::make_shared<ModelPart>(self.classInfo(), std::move(json));
  if (const QString id = SharedStyles::idOfStyle(self); !id.isEmpty()) {
    SharedStyles::setIDOfStyle(*copy, id);
  }
  return copy;
}

QVariantList dashPattern(const Self& self) {
  return variantFromSketchJson(getArray(self.json(), "dashPattern")).toList();
}

void setDashPattern(Self& self, const QVariantList& dashes) {
  SketchJson pattern = SketchJson::array();
  for (const QVariant& dash : dashes) {
    if (!isNumber(dash)) raise(QStringLiteral("dashPattern takes a list of numbers"));
    pattern.push_back(numberJson(dash.toDouble(), "dashPattern"));
  }
  self.change()["dashPattern"] = std::move(pattern);
}

template <Key list, const ClassInfo& (*info)()>
ModelPartRef first(const Self& self) {
  const QVariantList all = partsIn(self, list.text, info());
  return all.isEmpty() ? nullptr
                       : std::static_pointer_cast<ModelPart>(all.first().value<ObjectRef>());
}

template <Key list>
void disableAll(Self& self) {
  if (getArray(self.json(), list.text).empty()) return;
  for (SketchJson& part : self.change()[list.text]) {
    if (part.is_object()) part["isEnabled"] = false;
  }
}

/// What a style has for each of its lists, such as `list` = "fills".
template <Key list, const ClassInfo& (*info)()>
ClassInfoBuilder<Self> withList(ClassInfoBuilder<Self> builder) {
  const QByteArray one = QByteArray(list.text).chopped(1);
  const QByteArray name = one.first(1).toUpper() + one.sliced(1);
  return std::move(builder)
      .property(list.text, parts<list, info>, setParts<list, info>, "All of them, lowest first.")
      .operation(one, first<list, info>, "Returns the lowest one, or nil.")
      .operation("enabled" + name + 's', enabledParts<list, info>,
                 "Returns those that are switched on, lowest first.")
      .operation("firstEnabled" + name, firstEnabled<list, info>,
                 "Returns the lowest one that is switched on, or nil.")
      .operation("hasEnabled" + name, hasEnabled<list, info>, "Returns whether one is switched on.")
      .operation("addStyle" + name + ':', add<list, info>, "Puts one above the others.")
      .operation("removeStyle" + name + "AtIndex:", removeAt<list>, "Removes one by its index.")
      .operation("removeAllStyle" + name + 's', removeAll<list>, "Removes all of them.")
      .operation("disableAll" + name + 's', disableAll<list>, "Switches all of them off.");
}

ClassInfoBuilder<Self> withLists(ClassInfoBuilder<Self> builder) {
  return withList<"innerShadows", innerShadowClass>(withList<"shadows", shadowClass>(
      withList<"borders", borderClass>(withList<"fills", fillClass>(std::move(builder)))));
}

ClassInfo describedStyle() {
  return withLists(ClassInfoBuilder<Self>("MSStyle", Self::staticClassInfo())
                       .initializer(
                           "init", [] { return std::make_shared<Self>(styleClass(), newStyle()); },
                           "Creates a style without fills, borders and shadows."))
      .operation("addStylePartOfType:", addNew,
                 "Adds a fill (0), border (1), shadow (2) or inner shadow (3) and returns it.")
      .operation("removeStylePart:", removeThisPart,
                 "Removes a fill, border, shadow or inner shadow of this style.")
      .property("borderOptions", partOf<"borderOptions", borderOptionsClass>,
                "What all borders have in common.")
      .property("contextSettings", partOf<"contextSettings", graphicsContextSettingsClass>,
                "Opacity and blend mode of the whole layer.")
      .property("blur", blur, "The blur; switched off where there is none.")
      .property("miterLimit", M::number<"miterLimit", std::ratio<10>>, M::setNumber<"miterLimit">,
                "How far the corners of borders may reach, in border widths.")
      .property("windingRule", M::whole<"windingRule", 1>, M::setWhole<"windingRule">,
                "How overlapping parts are filled: nonzero (0) or even-odd (1).")
      .property("startMarkerType", M::whole<"startMarkerType">, M::setWhole<"startMarkerType">,
                "What an open line begins with; 0 for nothing.")
      .property("endMarkerType", M::whole<"endMarkerType">, M::setWhole<"endMarkerType">,
                "What an open line ends with; 0 for nothing.")
      .property("sharedObjectID", SharedStyles::idOfStyle, SharedStyles::setIDOfStyle,
                "The identifier of the shared style that it is a copy of; nil for none.")
      .property("textStyle", textStyle, "How texts look; nil in a style that says nothing of them.")
      .operation("copy", copyOf, "Returns a copy that is in no layer.");
}

}  // namespace

const ClassInfo& styleClass() {
  static const ClassInfo kClass = describedStyle();
  return kClass;
}

const ClassInfo& borderOptionsClass() {
  static const ClassInfo kClass =
      ClassInfoBuilder<Self>("MSStyleBorderOptions", Self::staticClassInfo())
          .property("isEnabled", M::flag<"isEnabled", true>, M::setFlag<"isEnabled">,
                    "Whether the dashes are drawn.")
          .property("dashPattern", dashPattern, setDashPattern,
                    "The lengths of dashes and gaps, in turn; empty for solid borders.")
          .property("lineCapStyle", M::whole<"lineCapStyle">, M::setWhole<"lineCapStyle">,
                    "How lines end: butt (0), round (1) or square (2).")
          .property("lineJoinStyle", M::whole<"lineJoinStyle">, M::setWhole<"lineJoinStyle">,
                    "How corners are drawn: miter (0), round (1) or bevel (2).");
  return kClass;
}

const ClassInfo& graphicsContextSettingsClass() {
  static const ClassInfo kClass =
      ClassInfoBuilder<Self>("MSGraphicsContextSettings", Self::staticClassInfo())
          .property("opacity", M::number<"opacity", std::ratio<1>>, M::setNumber<"opacity">,
                    "Opacity, between 0 and 1.")
          .property("blendMode", M::whole<"blendMode">, M::setWhole<"blendMode">,
                    "The blend mode by its number in documents; 0 is normal.");
  return kClass;
}

void assignStyle(SketchLayer& layer, SketchJson style) {
  const bool isText = layer.node().properties().kind == LayerKind::Text;
  const SketchJson attributes = get(get(style, "textStyle"), "encodedAttributes");
  if (isText && !get(style, "textStyle").is_object()) {
    const SketchJson& before = get(get(layer.node().json(), "style"), "textStyle");
    if (before.is_object()) style["textStyle"] = before;
  }
  layer.edit().change()["style"] = std::move(style);
  if (!isText || !attributes.is_object()) return;
  TextContent text(layer);
  text.changeAttributes([&](SketchJson& each) { each = attributes; });
  text.fitFrame();
}

QVariantList partsIn(const ModelPart& part, const char* list, const ClassInfo& info) {
  QVariantList parts;
  const size_t count = getArray(part.json(), list).size();
  for (size_t i = 0; i < count; ++i) {
    const ModelPart::Place place = ModelPart::Place() / std::string(list) / i;
    parts.append(toVariant(ModelPart::within(info, part, place)));
  }
  return parts;
}

ModelPartRef appendPart(ModelPart& part, const char* list, const ClassInfo& info, SketchJson json) {
  SketchJson& parts = part.change()[list];
  if (!parts.is_array()) parts = SketchJson::array();
  parts.push_back(std::move(json));
  return ModelPart::within(info, part, ModelPart::Place() / std::string(list) / (parts.size() - 1));
}

void removePart(ModelPart& part, const char* list, int index) {
  const size_t count = getArray(part.json(), list).size();
  if (index < 0 || size_t(index) >= count) {
    raise(QStringLiteral("there is no element %1 among the %2 of the %3")
              .arg(index)
              .arg(count)
              .arg(QString::fromLatin1(list)));
  }
  part.change()[list].erase(size_t(index));
}

}  // namespace kelvar
