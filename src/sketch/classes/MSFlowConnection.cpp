#include "sketch/classes/MSFlowConnection.h"

#include "sketch/classes/partOfLayer.h"
#include "sketch/document/SketchDocument.h"

namespace kelvar {
namespace {

using M = Member<ModelPart>;

const ClassInfo::Registration kRegistered(&flowClass);

SketchJson newFlow() {
  return {
      {"_class", "MSImmutableFlowConnection"}, {"animationType", 0}, {"destinationArtboardID", ""}};
}

SketchLayerRef destination(const ModelPart& flow) {
  const SketchDocumentRef document = flow.document();
  if (!document) return nullptr;
  const QString id = getString(flow.json(), "destinationArtboardID");
  for (const SketchLayerRef& artboard : document->artboards()) {
    if (artboard->objectID() == id) return artboard;
  }
  return nullptr;
}

bool isBack(const ModelPart& flow) {
  return getString(flow.json(), "destinationArtboardID") == u"back";
}

}  // namespace

const ClassInfo& flowClass() {
  static const ClassInfo kClass =
      ClassInfoBuilder<ModelPart>("MSFlowConnection", ModelPart::staticClassInfo())
          .initializer("init", newPart<flowClass, newFlow>, "Creates a link to nowhere.")
          .property("destinationArtboardID", M::text<"destinationArtboardID">,
                    M::setText<"destinationArtboardID">,
                    "The identifier of the artboard that it leads to; \"back\" for the previous "
                    "one.")
          .property("destinationArtboard", destination,
                    "The artboard that it leads to; nil if the document does not have it.")
          .property("animationType", M::whole<"animationType">, M::setWhole<"animationType">,
                    "How the artboard comes in: at once (-1), or from a side (0 to 4).")
          .property("maintainScrollPosition", M::flag<"maintainScrollPosition">,
                    M::setFlag<"maintainScrollPosition">, "Whether scrolling is kept.")
          .operation("isBackAction", isBack, "Returns whether it leads to the previous artboard.")
          .operation(
              "isValidFlowConnection",
              [](const ModelPart& self) { return isBack(self) || destination(self); },
              "Returns whether it leads anywhere.");
  return kClass;
}

ClassInfoBuilder<SketchLayer> withFlow(ClassInfoBuilder<SketchLayer> builder) {
  using L = Member<SketchLayer>;
  return std::move(builder)
      .property("flow", partOfLayerOrNil<"flow", flowClass>, setPartOfLayer<"flow", flowClass>,
                "Where a click leads in a prototype; nil for nowhere.")
      .property("isFixedToViewport", L::flag<"isFixedToViewport">, L::setFlag<"isFixedToViewport">,
                "Whether the layer stays in place when a prototype scrolls.");
}

}  // namespace kelvar
