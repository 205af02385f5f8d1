#include "sketch/classes/LayerClasses.h"

#include <utility>

#include "runtime/raise.h"
#include "sketch/classes/LayerRects.h"
#include "sketch/classes/MSFlowConnection.h"
#include "sketch/classes/MSLayerArray.h"
#include "sketch/classes/SharedStyles.h"
#include "sketch/classes/StyleClasses.h"
#include "sketch/classes/newLayerJson.h"
#include "sketch/document/SketchDocument.h"
#include "sketch/render/ArtboardRenderer.h"

namespace kelvar {
namespace {

using Self = SketchLayer;
using M = Member<SketchLayer>;

const ClassInfo::Registration kRegistered[] = {
    ClassInfo::Registration(&layerClass), ClassInfo::Registration(&styledLayerClass),
    ClassInfo::Registration(&sliceClass), ClassInfo::Registration(&hotspotClass)};

QVariantList children(const Self& self) { return MSLayerArray::toList(self.withDescendants()); }

QVariantList ancestors(const Self& self) {
  QList<SketchLayerRef> ancestors;
  for (SketchLayerRef around = self.parent(); around; around = around->parent()) {
    ancestors.prepend(around);
  }
  return MSLayerArray::toList(ancestors);
}

SketchLayerRef parentSymbol(const Self& self) {
  SketchLayerRef layer = refTo(self);
  while (layer && !layer->isSymbolMaster()) layer = layer->parent();
  return layer;
}

SketchLayerRef duplicate(Self& self) {
  const SketchLayerRef around = self.parent();
  if (!around) raise(QStringLiteral("\"%1\" is in no other layer").arg(self.name()));
  const SketchLayerRef copy = self.copy();
  insertOrRaise(*around, copy, around->children().indexOf(refTo(self)) + 1);
  return copy;
}

void select(Self& self, bool isSelected, bool byExtending) {
  const SketchDocumentRef document = self.document();
  if (!document) raise(QStringLiteral("\"%1\" is in no document").arg(self.name()));
  if (!byExtending) document->deselectAll();
  document->select(refTo(self), isSelected);
}

SketchLayerRef sliceAround(const SketchLayerRef& layer) {
  const SketchLayerRef around = orRaiseMissing(layer, "sliceLayerFromLayer:")->parent();
  if (!around) raise(QStringLiteral("\"%1\" is in no other layer").arg(layer->name()));
  const SketchLayerRef slice = newLayerOfKind("slice", layer->frameRect());
  slice->setName(layer->name());
  insertOrRaise(*around, slice, around->children().indexOf(layer) + 1);
  return slice;
}

void setIsSelected(Self& self, bool isSelected) { select(self, isSelected, true); }

void moveBeside(Self& self, const SketchLayerRef& group, const SketchLayerRef& other, int offset) {
  const SketchLayerRef around = other ? other->parent() : group;
  if (!around) raise(QStringLiteral("the layers are in no group"));
  const qsizetype index =
      other ? around->children().indexOf(other) + offset : around->children().size();
  insertOrRaise(*around, refTo(self), index);
}

QVariantMap userInfo(const Self& self) {
  return variantFromSketchJson(get(self.node().json(), "userInfo")).toMap();
}
void setUserInfo(Self& self, const QVariantMap& info) {
  SketchJson& json = self.edit().change();
  if (info.isEmpty()) {
    json.erase("userInfo");
  } else {
    json["userInfo"] = sketchJsonFromVariant(info);
  }
}

ModelPartRef style(const Self& self) {
  return std::make_shared<ModelPart>(styleClass(), refTo(self), ModelPart::Place("/style"));
}
void setStyle(Self& self, const ModelPartRef& style) {
  SketchJson copy = partOfClass(style, styleClass(), "setStyle:").json();
  const QString sharedID = SharedStyles::idOfStyle(*style);
  copy["do_objectID"] = newObjectID();
  assignStyle(self, std::move(copy));
  SharedStyles::setID(self, sharedID);
}
ModelPartRef exportOptions(const Self& self) {
  return std::make_shared<ModelPart>(exportOptionsClass(), refTo(self),
                                     ModelPart::Place("/exportOptions"));
}

/// The place of a layer in the tree.
ClassInfoBuilder<Self> withTree(ClassInfoBuilder<Self> builder) {
  return std::move(builder)
      .property("parentGroup", &Self::parent, "The layer around this one, or nil for a page.")
      .property("parentArtboard", &Self::artboard,
                "The artboard around the layer, or the layer itself; nil if it lies directly on "
                "the page.")
      .property("parentPage", &Self::page, "The page that the layer is on.")
      .property("parentSymbol", parentSymbol,
                "The symbol master around the layer, or the layer itself; nil for none.")
      .property(
          "parentRoot",
          [](const Self& self) { return self.artboard() ? self.artboard() : self.page(); },
          "The artboard around the layer or, if there is none, its page.")
      .property("ancestors", ancestors, "The layers around this one, the page first.")
      .property("children", children, "The layer itself and all layers in it, in drawing order.")
      .operation(
          "childrenIncludingSelf:",
          [](const Self& self, bool includingSelf) {
            return MSLayerArray::toList(self.withDescendants().mid(includingSelf ? 0 : 1));
          },
          "Returns all layers in this one, with or without the layer itself, in drawing order.")
      .operation(
          "containsLayers", [](const Self& self) { return !self.children().isEmpty(); },
          "Returns whether there are layers in it.")
      .operation("removeFromParent", &Self::removeFromParent,
                 "Takes the layer out of the document.")
      .operation("duplicate", duplicate, "Puts a copy above the layer and returns it.")
      .operation(
          "immutableModelObject", [](const Self& self) { return refTo(self); },
          "Returns the layer itself.")
      .operation("copy", &Self::copy, "Returns a copy that is in no document.")
      .operation(
          "moveToLayer:beforeLayer:",
          [](Self& self, const SketchLayerRef& group, const SketchLayerRef& other) {
            moveBeside(self, group, other, 0);
          },
          "Puts the layer below another one, or above all layers of a group if that is nil.")
      .operation(
          "isSelected", [](const Self& self) { return self.isSelected(); },
          "Returns whether the layer is selected.")
      .operation("setIsSelected:", setIsSelected, "Selects or deselects the layer.")
      .operation("select:byExpandingSelection:", select,
                 "Selects or deselects the layer; others stay selected only if the selection is "
                 "expanded.")
      .operation("select:byExtendingSelection:", select,
                 "Selects or deselects the layer; others stay selected only if the selection is "
                 "extended.");
}

ClassInfoBuilder<Self> withGeometry(ClassInfoBuilder<Self> builder) {
  return std::move(builder)
      .property(
          "frame",
          [](const Self& self) -> KVRectRef { return std::make_shared<LayerFrame>(refTo(self)); },
          [](Self& self, const KVRectRef& frame) {
            LayerFrame(refTo(self)).assign(rectOrZero(frame));
          },
          "The layer's frame in its parent, whose sides can be set; the contents stay as they are.")
      .property(
          "rect", &Self::frameRect,
          [](Self& self, const QRectF& rect) { LayerFrame(refTo(self)).assign(rect); },
          "The layer's frame as a structure.")
      .property(
          "absoluteRect",
          [](const Self& self) { return std::make_shared<AbsoluteRect>(refTo(self)); },
          "The layer's frame on its page, whose sides can be set.")
      .property(
          "bounds", [](const Self& self) { return QRectF(QPointF(), self.frameRect().size()); },
          "The frame in the layer's own coordinates.")
      .property(
          "origin", [](const Self& self) { return self.frameRect().topLeft(); },
          [](Self& self, const QPointF& at) {
            LayerFrame(refTo(self)).assign({at, self.frameRect().size()});
          },
          "The frame's top left corner.")
      .property(
          "center", [](const Self& self) { return self.frameRect().center(); },
          [](Self& self, const QPointF& center) {
            QRectF frame = self.frameRect();
            frame.moveCenter(center);
            LayerFrame(refTo(self)).assign(frame);
          },
          "The middle of the frame, in the parent.")
      .property(
          "absolutePosition", [](const Self& self) { return frameOnPage(self).topLeft(); },
          [](Self& self, const QPointF& at) {
            AbsoluteRect rect(refTo(self));
            rect.assign({at, rect.CGRect().size()});
          },
          "The top left corner on the page.")
      .operation(
          "frameForTransforms", [](const Self& self) { return self.frameRect(); },
          "Returns the layer's frame in its parent, before it is rotated and mirrored.")
      .property("absoluteInfluenceRect", coveredOnPage,
                "What the layer covers on its page, with borders, shadows and blurs.")
      .property("rotation", &Self::rotation, M::setNumber<"rotation">,
                "Rotation in degrees, counter-clockwise on screen.")
      .property("isFlippedHorizontal", &Self::isFlippedHorizontal,
                M::setFlag<"isFlippedHorizontal">, "Whether the layer is mirrored left to right.")
      .property("isFlippedVertical", &Self::isFlippedVertical, M::setFlag<"isFlippedVertical">,
                "Whether the layer is mirrored top to bottom.")
      .property(
          "constrainProportions",
          [](const Self& self) {
            return getBool(get(self.node().json(), "frame"), "constrainProportions");
          },
          [](Self& self, bool value) {
            self.edit().change()["frame"]["constrainProportions"] = value;
          },
          "Whether the host keeps the proportions when the layer is resized by hand.")
      .property("resizingConstraint", M::whole<"resizingConstraint", 63>,
                M::setWhole<"resizingConstraint">,
                "Which sides and sizes are fixed, as a bit mask of documents.");
}

ClassInfo describedLayer() {
  return withFlow(
             withGeometry(withTree(ClassInfoBuilder<Self>("MSLayer", Self::staticClassInfo()))))
      .property("isLocked", M::flag<"isLocked">, M::setFlag<"isLocked">,
                "Whether the host protects the layer from changes by hand.")
      .property("nameIsFixed", M::flag<"nameIsFixed">, M::setFlag<"nameIsFixed">,
                "Whether the host keeps the name when the content changes.")
      .property("hasClippingMask", M::flag<"hasClippingMask">, M::setFlag<"hasClippingMask">,
                "Whether the layer is a mask for those above it.")
      .property("clippingMaskMode", M::whole<"clippingMaskMode">, M::setWhole<"clippingMaskMode">,
                "What a mask goes by: its outline (0) or its opacity (1).")
      .property("shouldBreakMaskChain", M::flag<"shouldBreakMaskChain">,
                M::setFlag<"shouldBreakMaskChain">, "Whether the mask below does not apply.")
      .property("layerListExpandedType", M::whole<"layerListExpandedType">,
                M::setWhole<"layerListExpandedType">,
                "Whether the host's list shows what is in the layer: undecided (0), no (1) or yes "
                "(2).")
      .property("userInfo", userInfo, setUserInfo, "What plug-ins have stored on the layer.")
      .operation(
          "treeAsDictionary",
          [](const Self& self) { return variantFromSketchJson(self.node().json()).toMap(); },
          "Returns a copy of what the document has of the layer, without the layers in it.")
      .operation("exportOptions", exportOptions, "Returns how the layer is exported.")
      .operation(
          "isLayerExportable",
          [](const Self& self) {
            return !getArray(get(self.node().json(), "exportOptions"), "exportFormats").empty();
          },
          "Returns whether the layer has export formats.");
}

}  // namespace

const ClassInfo& layerClass() {
  static const ClassInfo kClass = describedLayer();
  return kClass;
}

const ClassInfo& styledLayerClass() {
  static const ClassInfo kClass =
      ClassInfoBuilder<Self>("MSStyledLayer", layerClass())
          .property("style", style, setStyle,
                    "The layer's style. One that is set is copied, and the layer gets its shared "
                    "style, if any.")
          .operation("usedStyle", style, "Returns the layer's style.")
          .property("sharedStyle", SharedStyles::of, SharedStyles::apply,
                    "The shared style that the layer refers to; nil for none. One that is set "
                    "gives the layer a copy of its style.")
          .property("sharedStyleID", SharedStyles::idOf, SharedStyles::setID,
                    "The identifier of the shared style that the layer refers to; nil for none.");
  return kClass;
}

const ClassInfo& sliceClass() {
  static const ClassInfo kClass =
      ClassInfoBuilder<Self>("MSSliceLayer", layerClass())
          .initializer("init", newLayer<"slice">, "Creates a slice.")
          .initializer("initWithFrame:", newLayerWithFrame<"slice">, "Creates a slice.")
          .classOperation("sliceLayerFromLayer:", sliceAround,
                          "Puts a slice of the same frame above a layer and returns it.")
          .property("hasBackgroundColor", M::flag<"hasBackgroundColor">,
                    M::setFlag<"hasBackgroundColor">, "Whether the slice has a background.");
  return kClass;
}

const ClassInfo& hotspotClass() {
  static const ClassInfo kClass =
      ClassInfoBuilder<Self>("MSHotspotLayer", layerClass())
          .initializer("init", newLayer<"MSImmutableHotspotLayer">, "Creates a hotspot.")
          .initializer("initWithFrame:", newLayerWithFrame<"MSImmutableHotspotLayer">,
                       "Creates a hotspot.");
  return kClass;
}

const ClassInfo& layerClassOf(LayerKind kind) {
  static constexpr std::pair<LayerKind, const ClassInfo& (*)()> kClasses[] = {
      {LayerKind::Page, pageClass},
      {LayerKind::Artboard, artboardClass},
      {LayerKind::SymbolMaster, symbolMasterClass},
      {LayerKind::SymbolInstance, symbolInstanceClass},
      {LayerKind::Group, groupClass},
      {LayerKind::ShapeGroup, shapeGroupClass},
      {LayerKind::Rectangle, rectangleClass},
      {LayerKind::Oval, ovalClass},
      {LayerKind::Triangle, triangleClass},
      {LayerKind::Polygon, polygonClass},
      {LayerKind::Star, starClass},
      {LayerKind::ShapePath, shapeLayerClass},
      {LayerKind::Text, textLayerClass},
      {LayerKind::Bitmap, bitmapLayerClass},
      {LayerKind::Slice, sliceClass},
      {LayerKind::Hotspot, hotspotClass}};
  for (const auto& [each, info] : kClasses) {
    if (each == kind) return info();
  }
  return layerClass();
}

const ClassInfo& SketchLayer::classInfo() const { return layerClassOf(node_->properties().kind); }

QRectF coveredOnPage(const SketchLayer& self) {
  const SketchDocumentRef document = self.document();
  if (!document) return frameOnPage(self);
  const QRectF covered = ArtboardRenderer(document).coveredRect(self);
  if (self.isPage()) return covered;
  if (self.isArtboard()) return covered.translated(self.frameRect().topLeft());
  return parentToPage(self).mapRect(covered);
}

SketchLayerRef newLayerOfKind(const char* kind, const QRectF& frame) {
  const SketchLayerRef layer = SketchLayer::create(std::make_unique<Layer>(newLayerJson(kind)));
  LayerFrame(layer).assign(frame);
  return layer;
}

SketchLayerRef refTo(const SketchLayer& layer) {
  return std::static_pointer_cast<SketchLayer>(
      std::const_pointer_cast<Object>(layer.shared_from_this()));
}

const SketchLayerRef& orRaiseMissing(const SketchLayerRef& layer, const char* what) {
  if (!layer) raise(QStringLiteral("%1 takes a layer, not nil").arg(QString::fromLatin1(what)));
  return layer;
}

void insertOrRaise(SketchLayer& group, const SketchLayerRef& layer, qsizetype index) {
  orRaise(group.insert(layer, index));
}

}  // namespace kelvar
