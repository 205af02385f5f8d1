#include "runtime/raise.h"
#include "sketch/classes/MSImageData.h"
#include "sketch/classes/StyleClasses.h"

namespace kelvar {
namespace {

using Self = ModelPart;
using M = Member<ModelPart>;

const ClassInfo::Registration kRegistered[] = {
    ClassInfo::Registration(&fillClass),         ClassInfo::Registration(&borderClass),
    ClassInfo::Registration(&shadowClass),       ClassInfo::Registration(&innerShadowClass),
    ClassInfo::Registration(&blurClass),         ClassInfo::Registration(&gradientClass),
    ClassInfo::Registration(&gradientStopClass),
};

template <const ClassInfo& (*info)(), SketchJson (*json)()>
ModelPartRef make() {
  return std::make_shared<ModelPart>(info(), json());
}

SketchJson dropShadow() { return newShadow("shadow"); }
SketchJson innerShadow() { return newShadow("innerShadow"); }

/// The kind of paint; a gradient needs one to draw.
void setFillType(Self& self, int type) {
  SketchJson& json = self.change();
  json["fillType"] = type;
  constexpr int kGradient = 1;
  if (type == kGradient && !get(json, "gradient").is_object()) json["gradient"] = newGradient();
}

void setGradient(Self& self, const ModelPartRef& gradient) {
  SketchJson copy = partOfClass(gradient, gradientClass(), "setGradient:").json();
  self.change()["gradient"] = std::move(copy);
}

MSImageDataRef image(const Self& self) {
  return MSImageData::of(get(self.json(), "image"), self.document());
}

/// An image only shows in a fill of images.
void setImage(Self& self, const MSImageDataRef& image) {
  if (!image) raise(QStringLiteral("setImage: takes an MSImageData, not nil"));
  SketchJson json = image->storeIn(self.document());
  self.change()["image"] = std::move(json);
}

/// What fills and borders have.
ClassInfoBuilder<Self> paint(ClassInfoBuilder<Self> builder) {
  return std::move(builder)
      .property("isEnabled", M::flag<"isEnabled", true>, M::setFlag<"isEnabled">,
                "Whether it is drawn.")
      .property("fillType", M::whole<"fillType">, setFillType,
                "What it is painted with: a color (0), a gradient (1), an image (4) or noise (5).")
      .property("color", colorOf<"color">, setColorOf<"color">, "The color.")
      .property("gradient", partOf<"gradient", gradientClass>, setGradient, "The gradient.")
      .property("contextSettings", partOf<"contextSettings", graphicsContextSettingsClass>,
                "Opacity and blend mode.");
}

ClassInfoBuilder<Self> shadow(ClassInfoBuilder<Self> builder) {
  return std::move(builder)
      .property("isEnabled", M::flag<"isEnabled", true>, M::setFlag<"isEnabled">,
                "Whether it is drawn.")
      .property("color", colorOf<"color">, setColorOf<"color">, "The color.")
      .property("offsetX", M::number<"offsetX">, M::setNumber<"offsetX">,
                "How far it is moved to the right.")
      .property("offsetY", M::number<"offsetY">, M::setNumber<"offsetY">,
                "How far it is moved down.")
      .property("blurRadius", M::number<"blurRadius">, M::setNumber<"blurRadius">,
                "How soft its edge is.")
      .property("spread", M::number<"spread">, M::setNumber<"spread">, "How much larger it is.")
      .property("contextSettings", partOf<"contextSettings", graphicsContextSettingsClass>,
                "Opacity and blend mode.");
}

QPointF from(const Self& self) { return getPoint(self.json(), "from"); }
QPointF to(const Self& self) { return getPoint(self.json(), "to"); }
template <Key key>
void setPoint(Self& self, const QPointF& point) {
  numberJson(point.x(), key.text);
  numberJson(point.y(), key.text);
  self.change()[key.text] = QStringLiteral("{%1, %2}")
                                .arg(point.x(), 0, 'g', 17)
                                .arg(point.y(), 0, 'g', 17)
                                .toStdString();
}

QVariantList stops(const Self& self) { return partsIn(self, "stops", gradientStopClass()); }

void setStops(Self& self, const QVariantList& stops) {
  SketchJson copies = SketchJson::array();
  for (const QVariant& stop : stops) {
    const auto given = std::dynamic_pointer_cast<ModelPart>(stop.value<ObjectRef>());
    copies.push_back(partOfClass(given, gradientStopClass(), "setStops:").json());
  }
  self.change()["stops"] = std::move(copies);
}

SketchJson stopJson(double position, const QVariant& color) {
  return {{"_class", "gradientStop"},
          {"position", numberJson(position, "position")},
          {"color", MSColor::jsonFrom(color, "stopWithPosition:color:")}};
}

ModelPartRef stopAt(const Self& self, int index) {
  const QVariantList all = stops(self);
  if (index < 0 || index >= all.size()) {
    raise(QStringLiteral("the gradient has no stop %1").arg(index));
  }
  return std::static_pointer_cast<ModelPart>(all[index].value<ObjectRef>());
}

void setStopColor(Self& self, const QVariant& color, int index) {
  setColorOf<"color">(*stopAt(self, index), color);
}

SketchJson newBlur() {
  return {{"_class", "blur"}, {"isEnabled", false}, {"center", "{0.5, 0.5}"},
          {"motionAngle", 0}, {"radius", 10},       {"saturation", 1},
          {"type", 0}};
}

/// A blur that was never there has nothing but what is set.
void setBlurEnabled(Self& self, bool isEnabled) {
  if (self.json().is_null()) self.change() = newBlur();
  self.change()["isEnabled"] = isEnabled;
}

}  // namespace

const ClassInfo& fillClass() {
  static const ClassInfo kClass =
      paint(ClassInfoBuilder<Self>("MSStyleFill", Self::staticClassInfo())
                .initializer("init", make<fillClass, newFill>, "Creates a gray fill."))
          .property("image", image, setImage, "The image; nil for none.")
          .property("patternFillType", M::whole<"patternFillType", 1>,
                    M::setWhole<"patternFillType">,
                    "How an image is laid out: tiled (0), filling (1), stretched (2) or fitting "
                    "(3).")
          .property("patternTileScale", M::number<"patternTileScale", std::ratio<1>>,
                    M::setNumber<"patternTileScale">, "The scale of a tiled image.")
          .property("noiseIndex", M::whole<"noiseIndex">, M::setWhole<"noiseIndex">,
                    "The kind of noise.")
          .property("noiseIntensity", M::number<"noiseIntensity">, M::setNumber<"noiseIntensity">,
                    "How much of the noise is seen, between 0 and 1.");
  return kClass;
}

const ClassInfo& borderClass() {
  static const ClassInfo kClass =
      paint(ClassInfoBuilder<Self>("MSStyleBorder", Self::staticClassInfo())
                .initializer("init", make<borderClass, newBorder>,
                             "Creates a gray border, one unit thick."))
          .property("thickness", M::number<"thickness", std::ratio<1>>, M::setNumber<"thickness">,
                    "How thick it is.")
          .property("position", M::whole<"position">, M::setWhole<"position">,
                    "Where it is: on the outline (0), inside (1) or outside (2).");
  return kClass;
}

const ClassInfo& shadowClass() {
  static const ClassInfo kClass = shadow(
      ClassInfoBuilder<Self>("MSStyleShadow", Self::staticClassInfo())
          .initializer("init", make<shadowClass, dropShadow>, "Creates a soft black shadow."));
  return kClass;
}

const ClassInfo& innerShadowClass() {
  static const ClassInfo kClass =
      shadow(ClassInfoBuilder<Self>("MSStyleInnerShadow", shadowClass())
                 .initializer("init", make<innerShadowClass, innerShadow>,
                              "Creates a soft black inner shadow."));
  return kClass;
}

const ClassInfo& blurClass() {
  static const ClassInfo kClass =
      ClassInfoBuilder<Self>("MSStyleBlur", Self::staticClassInfo())
          .property(
              "isEnabled",
              [](const Self& self) {
                return self.json().is_object() && getBool(self.json(), "isEnabled", true);
              },
              setBlurEnabled, "Whether it is drawn.")
          .property("radius", M::number<"radius">, M::setNumber<"radius">, "How far it blurs.")
          .property("type", M::whole<"type">, M::setWhole<"type">,
                    "Its kind: Gaussian (0), motion (1), zoom (2) or background (3).")
          .property("motionAngle", M::number<"motionAngle">, M::setNumber<"motionAngle">,
                    "The direction of a motion blur, in degrees.")
          .property("saturation", M::number<"saturation", std::ratio<1>>,
                    M::setNumber<"saturation">,
                    "The saturation of what is seen through a background blur.");
  return kClass;
}

const ClassInfo& gradientClass() {
  static const ClassInfo kClass =
      ClassInfoBuilder<Self>("MSGradient", Self::staticClassInfo())
          .initializer("init", make<gradientClass, newGradient>,
                       "Creates a gradient from white to black, from top to bottom.")
          .initializer("initBlankGradient", make<gradientClass, newGradient>,
                       "Creates a gradient from white to black, from top to bottom.")
          .property("gradientType", M::whole<"gradientType">, M::setWhole<"gradientType">,
                    "Its kind: linear (0), radial (1) or angular (2).")
          .property("from", from, setPoint<"from">,
                    "Where it begins, in parts of the layer's width and height.")
          .property("to", to, setPoint<"to">,
                    "Where it ends, in parts of the layer's width and height.")
          .property("elipseLength", M::number<"elipseLength">, M::setNumber<"elipseLength">,
                    "The proportions of a radial gradient; 0 for a circle.")
          .property("stops", stops, setStops, "The stops.")
          .operation("stopAtIndex:", stopAt, "Returns a stop by its index.")
          .operation("setColor:atIndex:", setStopColor, "Sets the color of a stop by its index.")
          .operation(
              "addStop:",
              [](Self& self, const ModelPartRef& stop) {
                appendPart(self, "stops", gradientStopClass(),
                           partOfClass(stop, gradientStopClass(), "addStop:").json());
              },
              "Puts a copy of a stop after the others.")
          .operation(
              "removeStopAtIndex:", [](Self& self, int index) { removePart(self, "stops", index); },
              "Removes a stop by its index.");
  return kClass;
}

const ClassInfo& gradientStopClass() {
  static const ClassInfo kClass =
      ClassInfoBuilder<Self>("MSGradientStop", Self::staticClassInfo())
          .classOperation(
              "stopWithPosition:color:",
              [](double position, const QVariant& color) {
                return std::make_shared<ModelPart>(gradientStopClass(), stopJson(position, color));
              },
              "Creates a stop at a position between 0 and 1.")
          .property("position", M::number<"position">, M::setNumber<"position">,
                    "Its position, between 0 and 1.")
          .property("color", colorOf<"color">, setColorOf<"color">, "The color.");
  return kClass;
}

}  // namespace kelvar
