#include "runtime/raise.h"
#include "sketch/classes/LayerClasses.h"
#include "sketch/classes/MSAvailableOverride.h"
#include "sketch/classes/MSLayerArray.h"
#include "sketch/classes/SymbolOverrides.h"
#include "sketch/classes/TextContent.h"
#include "sketch/classes/newLayerJson.h"
#include "sketch/document/SketchDocument.h"
#include "sketch/render/displaylist/DisplayList.h"
#include "sketch/render/symbols/Resizing.h"
#include "sketch/render/symbols/SymbolInstantiator.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;
using Self = SketchLayer;
using M = Member<SketchLayer>;

const ClassInfo::Registration kRegistered[] = {ClassInfo::Registration(&symbolMasterClass),
                                               ClassInfo::Registration(&symbolInstanceClass)};

QString symbolID(const Self& self) { return self.node().properties().symbolID; }

QVariantList allInstances(const Self& master) {
  QList<SketchLayerRef> instances;
  const SketchDocumentRef document = master.document();
  if (!document) return {};
  for (const SketchLayerRef& page : document->pages()) {
    for (const SketchLayerRef& layer : page->withDescendants()) {
      const LayerProperties& properties = layer->node().properties();
      if (properties.kind == LayerKind::SymbolInstance && properties.symbolID == symbolID(master)) {
        instances.append(layer);
      }
    }
  }
  return MSLayerArray::toList(instances);
}

SketchLayerRef masterOf(const Self& instance) {
  const SketchDocumentRef document = instance.document();
  return document ? document->symbolMaster(symbolID(instance)) : nullptr;
}

void changeSymbol(Self& self, const SketchLayerRef& master) {
  if (!master || !master->isSymbolMaster()) {
    raise(u"changeInstanceToSymbol: takes an MSSymbolMaster"_s);
  }
  self.edit().change()["symbolID"] = symbolID(*master).toStdString();
}

/// Puts a layer of another kind in the place of one, with its identifier, selection and child
/// layers, which stay the same objects. `json` need not have the child layers.
SketchLayerRef converted(const SketchLayerRef& layer, SketchJson json) {
  json.erase("layers");
  const SketchLayerRef other = SketchLayer::create(std::make_unique<Layer>(std::move(json)));
  const SketchLayerRef around = layer->parent();
  if (around) insertOrRaise(*around, other, around->children().indexOf(layer));
  if (layer->isSelected()) layer->document()->select(other);
  for (const SketchLayerRef& child : QList(layer->children())) {
    insertOrRaise(*other, child, other->children().size());
  }
  layer->removeFromParent();
  return other;
}

/// The artboard becomes a master of the same layers.
SketchLayerRef convertArtboard(const SketchLayerRef& artboard) {
  if (!artboard || artboard->node().properties().kind != LayerKind::Artboard) {
    raise(u"convertArtboardToSymbol: takes an MSArtboardGroup"_s);
  }
  SketchJson json = newLayerJson("symbolMaster");
  json.update(artboard->node().json());
  json["_class"] = "symbolMaster";
  return converted(artboard, std::move(json));
}

SketchLayerRef convertSymbol(const SketchLayerRef& master) {
  if (!master || !master->isSymbolMaster()) {
    raise(u"convertSymbolToArtboard: takes an MSSymbolMaster"_s);
  }
  SketchJson json = master->node().json();
  json["_class"] = "artboard";
  for (const char* key : {"symbolID", "includeBackgroundColorInInstance", "allowsOverrides",
                          "overrideProperties", "changeIdentifier"}) {
    json.erase(key);
  }
  return converted(master, std::move(json));
}

void resetSize(Self& instance) {
  const SketchLayerRef master = masterOf(instance);
  if (!master) raise(u"the symbol of \"%1\" is missing"_s.arg(instance.name()));
  const double scale = getNumber(instance.node().json(), "scale", 1);
  const QSizeF size = master->frameRect().size() * (scale > 0 ? scale : 1);
  instance.setFrame(KVRectFromCGRect({instance.frameRect().topLeft(), size}));
}

/// Texts that the instance changes are fitted when they are drawn. The layers that take their place
/// have frames that fit.
void fitTexts(const Self& group) {
  for (const SketchLayerRef& layer : group.withDescendants()) {
    if (!layer->node().json().contains(render::kHasForeignFrame)) continue;
    layer->edit().change().erase(render::kHasForeignFrame);
    if (layer->node().properties().kind == LayerKind::Text) TextContent(*layer).fitFrame();
  }
}

/// What the instance shows, as ordinary layers in its place.
SketchLayerRef detach(Self& self) {
  const SketchDocumentRef document = self.document();
  const SketchLayerRef parent = self.parent();
  if (!document || !parent) raise(u"the instance is in no document"_s);
  int layoutBudget = render::DisplayList::kLayoutBudget;
  QStringList warnings;
  SketchJson expanded =
      render::instantiateSymbol(self.node().json(), *document, &layoutBudget, &warnings);
  if (expanded.is_null()) raise(u"the symbol of \"%1\" is missing"_s.arg(self.name()));
  SketchJson json = newLayerJson("group", self.frameRect());
  json["name"] = self.name().toStdString();
  json["layers"] = std::move(expanded["layers"]);
  for (const char* key : {"rotation", "isFlippedHorizontal", "isFlippedVertical", "isVisible",
                          "isLocked", "style", "resizingConstraint"}) {
    if (const SketchJson& value = get(self.node().json(), key); !value.is_null()) json[key] = value;
  }
  const SketchLayerRef expandedGroup =
      SketchLayer::create(std::make_unique<Layer>(std::move(json)));
  fitTexts(*expandedGroup);
  const SketchLayerRef group = expandedGroup->copy();
  insertOrRaise(*parent, group, parent->children().indexOf(refTo(self)));
  self.removeFromParent();
  document->addWarnings(warnings);
  return group;
}

}  // namespace

SketchLayerRef newInstanceOf(const Self& master) {
  SketchJson json = newLayerJson("symbolInstance");
  json["symbolID"] = symbolID(master).toStdString();
  json["name"] = master.name().toStdString();
  const SketchLayerRef instance = SketchLayer::create(std::make_unique<Layer>(std::move(json)));
  instance->setFrame(KVRectFromCGRect({QPointF(), master.frameRect().size()}));
  return instance;
}

const ClassInfo& symbolMasterClass() {
  static const ClassInfo kClass =
      ClassInfoBuilder<Self>("MSSymbolMaster", artboardClass())
          .initializer("init", newLayer<"symbolMaster">, "Creates an empty symbol.")
          .initializer("initWithFrame:", newLayerWithFrame<"symbolMaster">,
                       "Creates an empty symbol with this frame.")
          .classOperation("convertArtboardToSymbol:", convertArtboard,
                          "Puts a symbol with the same layers in the place of an artboard and "
                          "returns it.")
          .classOperation("convertSymbolToArtboard:", convertSymbol,
                          "Puts an artboard with the same layers in the place of a symbol and "
                          "returns it; instances are left without their symbol.")
          .property("symbolID", symbolID, M::setText<"symbolID">,
                    "The identifier that instances refer to.")
          .operation("newSymbolInstance", newInstanceOf,
                     "Returns a new instance, which is in no document yet.")
          .operation("allInstances", allInstances, "Returns the instances in the document.")
          .operation(
              "hasInstances", [](const Self& self) { return !allInstances(self).isEmpty(); },
              "Returns whether there are instances in the document.")
          .operation(
              "isForeign", [](const Self& self) { return !self.page(); },
              "Returns whether the symbol is on no page, as those of libraries are.")
          .operation("overridePoints", SymbolOverrides::pointsOfSymbol,
                     "Returns what can differ in instances.")
          .property("includeBackgroundColorInInstance", M::flag<"includeBackgroundColorInInstance">,
                    M::setFlag<"includeBackgroundColorInInstance">,
                    "Whether instances show the background.");
  return kClass;
}

const ClassInfo& symbolInstanceClass() {
  static const ClassInfo kClass =
      ClassInfoBuilder<Self>("MSSymbolInstance", styledLayerClass())
          .initializer("init", newLayer<"symbolInstance">, "Creates an instance of no symbol.")
          .property("symbolID", symbolID, M::setText<"symbolID">, "The symbol's identifier.")
          .property("symbolMaster", masterOf, "The symbol; nil if the document does not have it.")
          .property("scale", M::number<"scale", std::ratio<1>>, M::setNumber<"scale">,
                    "How much larger than the symbol it is drawn.")
          .operation("changeInstanceToSymbol:", changeSymbol, "Makes it show another symbol.")
          .property("overrides", SymbolOverrides::read, SymbolOverrides::write,
                    "What differs from the symbol, by the identifiers of its layers; for nested "
                    "symbols, in dictionaries.")
          .property("overrideValues", SymbolOverrides::values,
                    "What differs from the symbol, one by one.")
          .operation("overridePoints", SymbolOverrides::points,
                     "Returns what can differ from the symbol.")
          .operation("availableOverrides", MSAvailableOverride::of,
                     "Returns what can differ from the symbol, with its values.")
          .operation("resetSizeToMaster", resetSize, "Makes it as large as its symbol.")
          .operation("setValue:forOverridePoint:", SymbolOverrides::setValueForPoint,
                     "Sets what differs from the symbol at a point.")
          .operation("detachByReplacingWithGroup", detach,
                     "Puts a group of ordinary layers in the place of the instance and returns "
                     "it.")
          .operation(
              "detachStylesAndReplaceWithGroupRecursively:",
              [](Self& self, bool) { return detach(self); },
              "Puts a group of ordinary layers in the place of the instance and returns it; "
              "nested instances stay instances.");
  return kClass;
}

}  // namespace kelvar
