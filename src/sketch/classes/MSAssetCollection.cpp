#include "sketch/classes/MSAssetCollection.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "runtime/ClassInfo.h"
#include "runtime/raise.h"
#include "sketch/classes/MSColor.h"
#include "sketch/classes/StyleClasses.h"
#include "sketch/classes/newLayerJson.h"
#include "sketch/document/DocumentFiles.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;
using Self = MSAssetCollection;

const ClassInfo::Registration kRegistered[] = {ClassInfo::Registration(&Self::staticClassInfo),
                                               ClassInfo::Registration(&colorAssetClass),
                                               ClassInfo::Registration(&gradientAssetClass)};

/// The lists of one kind of asset, and the member of a named one that is the plain one.
struct Kind {
  const char* plain;
  const char* named;
  const char* member;
  const char* className;
  const ClassInfo& (*info)();
};
const Kind kColors{"colors", "colorAssets", "color", "MSImmutableColorAsset", colorAssetClass};
const Kind kGradients{"gradients", "gradientAssets", "gradient", "MSImmutableGradientAsset",
                      gradientAssetClass};

constexpr const char* kComponents[] = {"red", "green", "blue", "alpha"};

const SketchJson& assetsOf(const Self& self) {
  return get(self.document()->files().document(), "assets");
}

bool hasNamed(const Self& self, const Kind& kind) {
  const SketchJson& assets = assetsOf(self);
  return assets.contains(kind.named) &&
         (!getArray(assets, kind.named).empty() || getArray(assets, kind.plain).empty());
}

/// All of a kind as named ones, whatever the document has.
SketchJson namedOf(const Self& self, const Kind& kind) {
  if (hasNamed(self, kind)) return getArray(assetsOf(self), kind.named);
  SketchJson named = SketchJson::array();
  for (const SketchJson& plain : getArray(assetsOf(self), kind.plain)) {
    named.push_back({{"_class", kind.className}, {kind.member, plain}});
  }
  return named;
}

/// Stores them in the forms that the document has.
void store(Self& self, const Kind& kind, SketchJson named) {
  SketchJson& assets = self.document()->edit().changeDocument()["assets"];
  if (!assets.is_object()) assets = {{"_class", "assetCollection"}};
  SketchJson plain = SketchJson::array();
  for (const SketchJson& each : named) plain.push_back(get(each, kind.member));
  const bool wasNamed = assets.contains(kind.named);
  const bool hasNames = std::any_of(named.begin(), named.end(), [](const SketchJson& each) {
    return !getString(each, "name").isEmpty();
  });
  if (!wasNamed || assets.contains(kind.plain)) assets[kind.plain] = std::move(plain);
  if (!wasNamed && !hasNames) return;
  for (SketchJson& each : named) {
    if (!each.contains("do_objectID")) each["do_objectID"] = newObjectID();
    if (!each.contains("name")) each["name"] = "";
  }
  assets[kind.named] = std::move(named);
}

SketchJson colorAsset(const QVariant& color, const char* what) {
  return {{"_class", kColors.className}, {"color", MSColor::jsonFrom(color, what)}};
}
SketchJson gradientAsset(const QVariant& gradient, const char* what) {
  const auto given = std::dynamic_pointer_cast<ModelPart>(gradient.value<ObjectRef>());
  return {{"_class", kGradients.className},
          {"gradient", partOfClass(given, gradientClass(), what).json()}};
}
using Wrap = SketchJson (*)(const QVariant& value, const char* what);

/// All of them or, if one is none, nothing.
template <const Kind& kind, Wrap wrap>
void addAll(Self& self, const QVariantList& values) {
  SketchJson named = namedOf(self, kind);
  for (const QVariant& value : values) named.push_back(wrap(value, "the collection"));
  store(self, kind, std::move(named));
}
template <const Kind& kind, Wrap wrap>
void add(Self& self, const QVariant& value) {
  addAll<kind, wrap>(self, {value});
}
template <const Kind& kind, Wrap wrap>
void setAll(Self& self, const QVariantList& values) {
  SketchJson named = SketchJson::array();
  for (const QVariant& value : values) named.push_back(wrap(value, "the collection"));
  store(self, kind, std::move(named));
}
template <const Kind& kind>
void addAsset(Self& self, const ModelPartRef& asset) {
  SketchJson named = namedOf(self, kind);
  named.push_back(partOfClass(asset, kind.info(), "the collection").json());
  store(self, kind, std::move(named));
}
template <const Kind& kind>
void setAssets(Self& self, const QVariantList& assets) {
  SketchJson named = SketchJson::array();
  for (const QVariant& each : assets) {
    const auto asset = std::dynamic_pointer_cast<ModelPart>(each.value<ObjectRef>());
    named.push_back(partOfClass(asset, kind.info(), "the collection").json());
  }
  store(self, kind, std::move(named));
}
template <const Kind& kind>
void removeAll(Self& self) {
  store(self, kind, SketchJson::array());
}
template <const Kind& kind>
void removeAt(Self& self, int index) {
  SketchJson named = namedOf(self, kind);
  if (index < 0 || size_t(index) >= named.size()) {
    raise(u"there is no element %1 among the %2 of the %3"_s.arg(index)
              .arg(named.size())
              .arg(QString::fromLatin1(kind.plain)));
  }
  named.erase(size_t(index));
  store(self, kind, std::move(named));
}
/// Whatever else a color has, such as an identifier.
bool hasSameComponents(const SketchJson& a, const SketchJson& b) {
  constexpr double kTolerance = 1e-6;
  return std::all_of(std::begin(kComponents), std::end(kComponents), [&](const char* key) {
    const double missing = key == std::string_view("alpha") ? 1 : 0;
    return std::abs(getNumber(a, key, missing) - getNumber(b, key, missing)) < kTolerance;
  });
}
/// Nothing happens if there is none.
void removeColor(Self& self, const QVariant& color) {
  const SketchJson wanted = MSColor::jsonFrom(color, "the collection");
  const SketchJson named = namedOf(self, kColors);
  for (size_t i = 0; i < named.size(); ++i) {
    if (!hasSameComponents(get(named[i], "color"), wanted)) continue;
    return removeAt<kColors>(self, int(i));
  }
}

QVariantList colors(const Self& self) {
  QVariantList colors;
  for (const SketchJson& each : namedOf(self, kColors)) {
    colors.append(toVariant(std::make_shared<MSColor>(get(each, "color"))));
  }
  return colors;
}
QVariantList gradients(const Self& self) {
  QVariantList gradients;
  for (const SketchJson& each : namedOf(self, kGradients)) {
    gradients.append(
        toVariant(std::make_shared<ModelPart>(gradientClass(), get(each, "gradient"))));
  }
  return gradients;
}
template <const Kind& kind>
QVariantList assets(const Self& self) {
  QVariantList assets;
  for (const SketchJson& each : namedOf(self, kind)) {
    assets.append(toVariant(std::make_shared<ModelPart>(kind.info(), each)));
  }
  return assets;
}

template <const Kind& kind, Wrap wrap>
ModelPartRef make(const QVariant& value, const QString& name) {
  SketchJson json = wrap(value, "initWithAsset:name:");
  json["do_objectID"] = newObjectID();
  json["name"] = name.toStdString();
  return std::make_shared<ModelPart>(kind.info(), std::move(json));
}

ClassInfoBuilder<Self> withColors(ClassInfoBuilder<Self> builder) {
  return std::move(builder)
      .property("colors", colors, setAll<kColors, colorAsset>, "The colors, as copies.")
      .operation("primitiveColors", colors, "Returns the colors, as copies.")
      .property("colorAssets", assets<kColors>, setAssets<kColors>,
                "The colors with their names, as copies.")
      .operation("addColor:", add<kColors, colorAsset>, "Adds a color.")
      .operation("addColors:", addAll<kColors, colorAsset>, "Adds colors.")
      .operation("addColorAsset:", addAsset<kColors>, "Adds a color with a name.")
      .operation("removeColor:", removeColor,
                 "Removes the first color of these components, if there is one.")
      .operation("removeColorAtIndex:", removeAt<kColors>, "Removes a color by its index.")
      .operation("removeColorAssetAtIndex:", removeAt<kColors>, "Removes a color by its index.")
      .operation("removeAllColors", removeAll<kColors>, "Removes all colors.")
      .operation("removeAllColorAssets", removeAll<kColors>, "Removes all colors.");
}

ClassInfoBuilder<Self> withGradients(ClassInfoBuilder<Self> builder) {
  return std::move(builder)
      .property("gradients", gradients, setAll<kGradients, gradientAsset>,
                "The gradients, as copies.")
      .property("gradientAssets", assets<kGradients>, setAssets<kGradients>,
                "The gradients with their names, as copies.")
      .operation("addGradient:", add<kGradients, gradientAsset>, "Adds a gradient.")
      .operation("addGradients:", addAll<kGradients, gradientAsset>, "Adds gradients.")
      .operation("addGradientAsset:", addAsset<kGradients>, "Adds a gradient with a name.")
      .operation("removeGradientAtIndex:", removeAt<kGradients>, "Removes a gradient by its index.")
      .operation("removeAllGradients", removeAll<kGradients>, "Removes all gradients.")
      .operation("removeAllGradientAssets", removeAll<kGradients>, "Removes all gradients.");
}

using M = Member<ModelPart>;

}  // namespace

const ClassInfo& MSAssetCollection::staticClassInfo() {
  static const ClassInfo kClass =
      withGradients(withColors(ClassInfoBuilder<Self>("MSAssetCollection")));
  return kClass;
}

const ClassInfo& colorAssetClass() {
  static const ClassInfo kClass =
      ClassInfoBuilder<ModelPart>("MSColorAsset", ModelPart::staticClassInfo())
          .initializer("initWithAsset:name:", make<kColors, colorAsset>,
                       "Creates a named copy of a color.")
          .property("name", M::text<"name">, M::setText<"name">, "The name.")
          .property("color", colorOf<"color">, setColorOf<"color">, "The color.");
  return kClass;
}

const ClassInfo& gradientAssetClass() {
  static const ClassInfo kClass =
      ClassInfoBuilder<ModelPart>("MSGradientAsset", ModelPart::staticClassInfo())
          .initializer("initWithAsset:name:", make<kGradients, gradientAsset>,
                       "Creates a named copy of a gradient.")
          .property("name", M::text<"name">, M::setText<"name">, "The name.")
          .property("gradient", partOf<"gradient", gradientClass>, "The gradient.");
  return kClass;
}

}  // namespace kelvar
