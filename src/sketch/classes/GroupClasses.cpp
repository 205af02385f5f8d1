#include "runtime/raise.h"
#include "sketch/classes/GroupEditing.h"
#include "sketch/classes/LayerClasses.h"
#include "sketch/classes/MSColor.h"
#include "sketch/classes/MSLayerArray.h"
#include "sketch/classes/RulersAndGrids.h"
#include "sketch/classes/shapeWithPath.h"
#include "sketch/document/SketchDocument.h"

namespace kelvar {
namespace {

using Self = SketchLayer;
using M = Member<SketchLayer>;

const ClassInfo::Registration kRegistered[] = {
    ClassInfo::Registration(&groupClass), ClassInfo::Registration(&pageClass),
    ClassInfo::Registration(&artboardClass), ClassInfo::Registration(&shapeGroupClass)};

void insertAll(Self& self, const QVariant& layers, qsizetype index, const char* what) {
  for (const SketchLayerRef& layer : MSLayerArray::layersFrom(layers, what)) {
    insertOrRaise(self, layer, index);
    index = self.children().indexOf(layer) + 1;
  }
}

/// The index of a layer that is in the group.
qsizetype indexIn(const Self& self, const SketchLayerRef& layer, const char* what) {
  const qsizetype index = self.children().indexOf(orRaiseMissing(layer, what));
  if (index < 0) {
    raise(QStringLiteral("\"%1\" is not in \"%2\"").arg(layer->name(), self.name()));
  }
  return index;
}

void addLayers(Self& self, const QVariant& layers) {
  insertAll(self, layers, self.children().size(), "addLayers:");
}
void insertAt(Self& self, const QVariant& layers, int index) {
  insertAll(self, layers, index, "insertLayer:atIndex:");
}
void insertAfter(Self& self, const QVariant& layers, const SketchLayerRef& other) {
  insertAll(self, layers, indexIn(self, other, "insertLayer:afterLayer:") + 1,
            "insertLayer:afterLayer:");
}
void insertBefore(Self& self, const QVariant& layers, const SketchLayerRef& other) {
  insertAll(self, layers, indexIn(self, other, "insertLayer:beforeLayer:"),
            "insertLayer:beforeLayer:");
}
void removeLayer(Self& self, const SketchLayerRef& layer) {
  indexIn(self, layer, "removeLayer:");
  layer->removeFromParent();
}
void removeAll(Self& self) {
  while (!self.children().isEmpty()) self.children().last()->removeFromParent();
}

SketchLayerRef layerAt(const Self& self, int index) {
  if (index < 0 || index >= self.children().size()) {
    raise(QStringLiteral("\"%1\" has no layer at %2, only %3 in all")
              .arg(self.name())
              .arg(index)
              .arg(self.children().size()));
  }
  return self.children()[index];
}

ClassInfoBuilder<Self> withLayers(ClassInfoBuilder<Self> builder) {
  return std::move(builder)
      .operation("addLayer:", addLayers, "Puts a layer above the others.")
      .operation("addLayers:", addLayers, "Puts layers above the others.")
      .operation("insertLayer:atIndex:", insertAt, "Puts a layer above as many others.")
      .operation("insertLayers:atIndex:", insertAt, "Puts layers above as many others.")
      .operation("insertLayer:afterLayer:", insertAfter, "Puts a layer above another one.")
      .operation("insertLayers:afterLayer:", insertAfter, "Puts layers above another one.")
      .operation("insertLayer:beforeLayer:", insertBefore, "Puts a layer below another one.")
      .operation("insertLayers:beforeLayer:", insertBefore, "Puts layers below another one.")
      .operation("removeLayer:", removeLayer, "Takes a layer out.")
      .operation("removeAllLayers", removeAll, "Takes all layers out.")
      .operation("layerAtIndex:", layerAt, "Returns a layer by its index, from the lowest.")
      .operation(
          "indexOfLayer:",
          [](const Self& self, const SketchLayerRef& layer) {
            return int(self.children().indexOf(layer));
          },
          "Returns the index of a layer, from the lowest; -1 if it is not in the group.")
      .operation(
          "firstLayer", [](const Self& self) { return self.children().value(0); },
          "Returns the lowest layer, or nil.")
      .operation(
          "lastLayer",
          [](const Self& self) { return self.children().value(self.children().size() - 1); },
          "Returns the highest layer, or nil.")
      .operation(
          "layerWithID:",
          [](const Self& self, const QString& objectID) -> SketchLayerRef {
            for (const SketchLayerRef& layer : self.withDescendants()) {
              if (layer->objectID() == objectID) return layer;
            }
            return nullptr;
          },
          "Returns the layer with this identifier, at any depth, or nil.");
}

SketchLayerRef grouped(const QVariant& layers) {
  return GroupEditing::group(MSLayerArray::layersFrom(layers, "groupFromLayers:"));
}

QVariantList exportable(const Self& self) {
  QList<SketchLayerRef> layers = self.withDescendants();
  layers.removeIf([](const SketchLayerRef& layer) {
    return getArray(get(layer->node().json(), "exportOptions"), "exportFormats").empty();
  });
  return MSLayerArray::toList(layers);
}

QList<SketchLayerRef> selectedOn(const Self& page) {
  const SketchDocumentRef document = page.document();
  QList<SketchLayerRef> selected = document ? document->selection() : QList<SketchLayerRef>();
  selected.removeIf([&](const SketchLayerRef& layer) { return layer->page().get() != &page; });
  return selected;
}

SketchLayerRef currentArtboard(const Self& page) {
  for (const SketchLayerRef& layer : selectedOn(page)) {
    if (const SketchLayerRef artboard = layer->artboard()) return artboard;
  }
  return nullptr;
}

void selectOnly(Self& page, const QVariant& layers) {
  const SketchDocumentRef document = page.document();
  if (!document) raise(QStringLiteral("the page is in no document"));
  const QList<SketchLayerRef> wanted = isNothing(layers)
                                           ? QList<SketchLayerRef>()
                                           : MSLayerArray::layersFrom(layers, "selectLayers:");
  document->deselectAll();
  for (const SketchLayerRef& layer : wanted) document->select(layer);
}

MSColorRef backgroundColor(const Self& self) {
  const SketchLayerRef layer = refTo(self);
  return std::make_shared<MSColor>(
      get(self.node().json(), "backgroundColor"), MSColor::Kind::Mutable,
      [layer](const SketchJson& color) { layer->edit().change()["backgroundColor"] = color; });
}
void setBackgroundColor(Self& self, const QVariant& color) {
  self.edit().change()["backgroundColor"] = MSColor::jsonFrom(color, "setBackgroundColor:");
}

ClassInfoBuilder<Self> withSelection(ClassInfoBuilder<Self> builder) {
  return std::move(builder)
      .operation(
          "selectedLayers",
          [](const Self& self) { return std::make_shared<MSLayerArray>(selectedOn(self)); },
          "Returns the selected layers on the page.")
      .operation(
          "selection", [](const Self& self) { return MSLayerArray::toList(selectedOn(self)); },
          "Returns the selected layers on the page as an ordinary list.")
      .operation("selectLayers:", selectOnly, "Selects these layers and no others; nil for none.")
      .operation("changeSelectionBySelectingLayers:", selectOnly,
                 "Selects these layers and no others.")
      .operation("changeSelectionToLayers:", selectOnly, "Selects these layers and no others.")
      .operation(
          "deselectAllLayers",
          [](Self& self) {
            for (const SketchLayerRef& layer : selectedOn(self)) {
              self.document()->select(layer, false);
            }
          },
          "Deselects the layers on the page.")
      .operation("currentArtboard", currentArtboard,
                 "Returns the artboard that is selected or has a selected layer, or nil.");
}

}  // namespace

const ClassInfo& groupClass() {
  static const ClassInfo kClass =
      withLayers(ClassInfoBuilder<Self>("MSLayerGroup", styledLayerClass())
                     .initializer("init", newLayer<"group">, "Creates an empty group.")
                     .initializer("initWithFrame:", newLayerWithFrame<"group">,
                                  "Creates an empty group with this frame.")
                     .classOperation("groupFromLayers:", grouped,
                                     "Puts layers of one parent into a new group in the place of "
                                     "the highest.")
                     .classOperation("groupWithLayers:", grouped,
                                     "Puts layers of one parent into a new group in the place of "
                                     "the highest."))
          .operation("exportableLayers", exportable,
                     "Returns the layers with export formats, at any depth.")
          .property("hasClickThrough", M::flag<"hasClickThrough">, M::setFlag<"hasClickThrough">,
                    "Whether a click in the host selects what is in the group.")
          .operation(
              "resizeToFitChildrenWithOption:",
              [](Self& self, int) { GroupEditing::fitToChildren(self); },
              "Makes the frame as large as the layers in it, which stay where they are; the option "
              "has no meaning here.")
          .operation(
              "fixGeometryWithOptions:", [](Self& self, int) { GroupEditing::fitToChildren(self); },
              "Makes the frame as large as the layers in it, which stay where they are; the "
              "options have no meaning here.")
          .operation(
              "ungroup",
              [](Self& self) { return MSLayerArray::toList(GroupEditing::ungroup(self)); },
              "Puts the layers in the place of the group and returns them.");
  return kClass;
}

const ClassInfo& pageClass() {
  static const ClassInfo kClass =
      withRulersAndGrids(
          withSelection(ClassInfoBuilder<Self>("MSPage", groupClass())
                            .initializer("init", newLayer<"page">,
                                         "Creates an empty page, which is in no document yet.")))
          .property(
              "symbols",
              [](const Self& self) {
                QList<SketchLayerRef> masters = self.withDescendants();
                masters.removeIf([](const auto& layer) { return !layer->isSymbolMaster(); });
                return MSLayerArray::toList(masters);
              },
              "The symbol masters on the page.")
          .operation("allExportableLayers", exportable,
                     "Returns the layers with export formats, at any depth.")
          .property(
              "slices",
              [](const Self& self) {
                QList<SketchLayerRef> slices = self.withDescendants();
                slices.removeIf([](const SketchLayerRef& layer) {
                  return layer->node().properties().kind != LayerKind::Slice;
                });
                return MSLayerArray::toList(slices);
              },
              "The slices on the page, at any depth.")
          .operation(
              "contentBounds", [](const Self& self) { return GroupEditing::childrenRect(self); },
              "Returns the rectangle around the frames of the layers on the page.");
  return kClass;
}

const ClassInfo& artboardClass() {
  static const ClassInfo kClass =
      withRulersAndGrids(
          ClassInfoBuilder<Self>("MSArtboardGroup", groupClass())
              .initializer("init", newLayer<"artboard">, "Creates an empty artboard.")
              .initializer("initWithFrame:", newLayerWithFrame<"artboard">,
                           "Creates an empty artboard with this frame."))
          .property("isFlowHome", M::flag<"isFlowHome">, M::setFlag<"isFlowHome">,
                    "Whether a prototype begins here.")
          .property("hasBackgroundColor", M::flag<"hasBackgroundColor">,
                    M::setFlag<"hasBackgroundColor">, "Whether the background is drawn.")
          .property("backgroundColor", backgroundColor, setBackgroundColor, "The background.")
          .property(
              "includeBackgroundColorInExport", M::flag<"includeBackgroundColorInExport", true>,
              M::setFlag<"includeBackgroundColorInExport">, "Whether the background is exported.")
          .property("resizesContent", M::flag<"resizesContent">, M::setFlag<"resizesContent">,
                    "Whether the host resizes what is in it.");
  return kClass;
}

const ClassInfo& shapeGroupClass() {
  static const ClassInfo kClass =
      ClassInfoBuilder<Self>("MSShapeGroup", groupClass())
          .initializer("init", newLayer<"shapeGroup">, "Creates an empty shape group.")
          .classOperation("shapeWithPath:", shapeWithPath,
                          "Creates a shape group of a path, or of a shape that is taken out of "
                          "where it is.")
          .classOperation("layerWithPath:", shapeWithPath,
                          "Creates a shape group of a path, or of a shape that is taken out of "
                          "where it is.")
          .classOperation("shapeWithBezierPath:", shapeWithPath,
                          "Creates a shape group of a path, or of a shape that is taken out of "
                          "where it is.")
          .classOperation(
              "shapeWithRect:",
              [](const QRectF& rect) {
                return shapeWithPath(toVariant(newLayerOfKind("rectangle", rect)));
              },
              "Creates a shape group of a rectangle.")
          .operation("bezierPathWithTransforms", pathInParent,
                     "Returns the outline in the coordinates of its parent, rotated and mirrored "
                     "like the layer.")
          .operation("pathInFrameWithTransforms", pathInParent,
                     "Returns the outline in the coordinates of its parent, rotated and mirrored "
                     "like the layer.")
          .operation("pathInFrame", pathInFrame,
                     "Returns the outline in the coordinates of its parent, neither rotated nor "
                     "mirrored.")
          .property("booleanOperation", M::whole<"booleanOperation", -1>,
                    M::setWhole<"booleanOperation">,
                    "How it is combined with the shape below: none (-1), union (0), subtract (1), "
                    "intersect (2) or difference (3).");
  return kClass;
}

}  // namespace kelvar
