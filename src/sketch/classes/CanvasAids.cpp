#include "sketch/classes/CanvasAids.h"

#include "runtime/raise.h"
#include "sketch/classes/LayerClasses.h"
#include "sketch/classes/ModelPart.h"
#include "sketch/document/Layer.h"
#include "sketch/document/SketchDocument.h"

namespace kelvar {
namespace {

using Self = SketchLayer;
using M = Member<ModelPart>;

const ClassInfo::Registration kRegistered[] = {
    ClassInfo::Registration(&rulerClass), ClassInfo::Registration(&gridClass),
    ClassInfo::Registration(&layoutClass), ClassInfo::Registration(&flowClass)};

template <Key key, const ClassInfo& (*info)()>
ModelPartRef part(const Self& self) {
  return std::make_shared<ModelPart>(info(), refTo(self),
                                     ModelPart::Place() / std::string(key.text));
}
/// Nil for none.
template <Key key, const ClassInfo& (*info)()>
ModelPartRef partOrNil(const Self& self) {
  return get(self.node().json(), key.text).is_object() ? part<key, info>(self) : nullptr;
}
/// Nil removes it.
template <Key key, const ClassInfo& (*info)()>
void setPart(Self& self, const ModelPartRef& given) {
  if (!given) {
    self.edit().change().erase(key.text);
    return;
  }
  SketchJson copy = partOfClass(given, info(), key.text).json();
  self.edit().change()[key.text] = std::move(copy);
}

SketchJson& guidesToChange(ModelPart& ruler) {
  SketchJson& json = ruler.change();
  if (!json.contains("_class")) json["_class"] = "rulerData";
  if (!json.contains("base")) json["base"] = 0;
  SketchJson& guides = json["guides"];
  if (!guides.is_array()) guides = SketchJson::array();
  return guides;
}

const SketchJson& guideAt(const ModelPart& ruler, int index) {
  const SketchJson& guides = getArray(ruler.json(), "guides");
  if (index >= 0 && size_t(index) < guides.size()) return guides[size_t(index)];
  raise(QStringLiteral("the ruler has no guide %1, only %2 in all").arg(index).arg(guides.size()));
}

SketchJson newGrid() {
  return {{"_class", "simpleGrid"}, {"isEnabled", true}, {"gridSize", 20}, {"thickGridTimes", 10}};
}
SketchJson newLayout() {
  return {{"_class", "layoutGrid"},
          {"isEnabled", true},
          {"columnWidth", 60},
          {"drawHorizontal", false},
          {"drawHorizontalLines", false},
          {"drawVertical", true},
          {"gutterHeight", 20},
          {"gutterWidth", 20},
          {"guttersOutside", true},
          {"horizontalOffset", 0},
          {"numberOfColumns", 12},
          {"rowHeightMultiplication", 5},
          {"totalWidth", 960}};
}
SketchJson newFlow() {
  return {
      {"_class", "MSImmutableFlowConnection"}, {"animationType", 0}, {"destinationArtboardID", ""}};
}
template <const ClassInfo& (*info)(), SketchJson (*json)()>
ModelPartRef make() {
  return std::make_shared<ModelPart>(info(), json());
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

constexpr auto kBack = "back";

}  // namespace

const ClassInfo& rulerClass() {
  static const ClassInfo kClass =
      ClassInfoBuilder<ModelPart>("MSRulerData", ModelPart::staticClassInfo())
          .property("base", M::number<"base">, M::setNumber<"base">, "Where the ruler's 0 is.")
          .property(
              "guides",
              [](const ModelPart& self) {
                return variantFromSketchJson(getArray(self.json(), "guides")).toList();
              },
              "Where the guides are.")
          .operation(
              "numberOfGuides",
              [](const ModelPart& self) { return int(getArray(self.json(), "guides").size()); },
              "Returns how many guides there are.")
          .operation(
              "guideAtIndex:",
              [](const ModelPart& self, int index) {
                return variantFromSketchJson(guideAt(self, index)).toDouble();
              },
              "Returns where a guide is, by its index.")
          .operation(
              "addGuideWithValue:",
              [](ModelPart& self, double at) {
                SketchJson json = numberJson(at, "addGuideWithValue:");
                guidesToChange(self).push_back(std::move(json));
              },
              "Adds a guide.")
          .operation(
              "removeGuideAtIndex:",
              [](ModelPart& self, int index) {
                guideAt(self, index);
                guidesToChange(self).erase(size_t(index));
              },
              "Removes a guide by its index.")
          .operation(
              "removeAllGuides",
              [](ModelPart& self) { guidesToChange(self) = SketchJson::array(); },
              "Removes all guides.");
  return kClass;
}

const ClassInfo& gridClass() {
  static const ClassInfo kClass =
      ClassInfoBuilder<ModelPart>("MSSimpleGrid", ModelPart::staticClassInfo())
          .initializer("init", make<gridClass, newGrid>, "Creates a grid of 20 units.")
          .property("isEnabled", M::flag<"isEnabled">, M::setFlag<"isEnabled">,
                    "Whether the host shows it.")
          .property("gridSize", M::number<"gridSize">, M::setNumber<"gridSize">,
                    "How far its lines are apart.")
          .property("thickGridTimes", M::whole<"thickGridTimes">, M::setWhole<"thickGridTimes">,
                    "After how many lines one is thick; 0 for none.");
  return kClass;
}

const ClassInfo& layoutClass() {
  static const ClassInfo kClass =
      ClassInfoBuilder<ModelPart>("MSLayoutGrid", ModelPart::staticClassInfo())
          .initializer("init", make<layoutClass, newLayout>, "Creates a layout of 12 columns.")
          .property("isEnabled", M::flag<"isEnabled">, M::setFlag<"isEnabled">,
                    "Whether the host shows it.")
          .property("totalWidth", M::number<"totalWidth">, M::setNumber<"totalWidth">,
                    "The width of all columns together.")
          .property("horizontalOffset", M::number<"horizontalOffset">,
                    M::setNumber<"horizontalOffset">, "Where the first column begins.")
          .property("numberOfColumns", M::whole<"numberOfColumns">, M::setWhole<"numberOfColumns">,
                    "How many columns there are.")
          .property("columnWidth", M::number<"columnWidth">, M::setNumber<"columnWidth">,
                    "The width of a column.")
          .property("gutterWidth", M::number<"gutterWidth">, M::setNumber<"gutterWidth">,
                    "What is between two columns.")
          .property("gutterHeight", M::number<"gutterHeight">, M::setNumber<"gutterHeight">,
                    "What is between two rows.")
          .property("guttersOutside", M::flag<"guttersOutside">, M::setFlag<"guttersOutside">,
                    "Whether half a gutter is left and right of the columns.")
          .property("rowHeightMultiplication", M::number<"rowHeightMultiplication">,
                    M::setNumber<"rowHeightMultiplication">, "The height of a row, in gutters.")
          .property("drawVertical", M::flag<"drawVertical">, M::setFlag<"drawVertical">,
                    "Whether columns are shown.")
          .property("drawHorizontal", M::flag<"drawHorizontal">, M::setFlag<"drawHorizontal">,
                    "Whether rows are shown.")
          .property("drawHorizontalLines", M::flag<"drawHorizontalLines">,
                    M::setFlag<"drawHorizontalLines">, "Whether the lines of rows are shown.");
  return kClass;
}

const ClassInfo& flowClass() {
  static const ClassInfo kClass =
      ClassInfoBuilder<ModelPart>("MSFlowConnection", ModelPart::staticClassInfo())
          .initializer("init", make<flowClass, newFlow>, "Creates a link to nowhere.")
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
          .operation(
              "isBackAction",
              [](const ModelPart& self) {
                return getString(self.json(), "destinationArtboardID") == QLatin1StringView(kBack);
              },
              "Returns whether it leads to the previous artboard.")
          .operation(
              "isValidFlowConnection",
              [](const ModelPart& self) {
                return getString(self.json(), "destinationArtboardID") ==
                           QLatin1StringView(kBack) ||
                       destination(self);
              },
              "Returns whether it leads anywhere.");
  return kClass;
}

ClassInfoBuilder<SketchLayer> withCanvasAids(ClassInfoBuilder<SketchLayer> builder) {
  return std::move(builder)
      .property("horizontalRulerData", part<"horizontalRulerData", rulerClass>,
                setPart<"horizontalRulerData", rulerClass>,
                "The horizontal ruler with its vertical guides.")
      .property("verticalRulerData", part<"verticalRulerData", rulerClass>,
                setPart<"verticalRulerData", rulerClass>,
                "The vertical ruler with its horizontal guides.")
      .property("grid", partOrNil<"grid", gridClass>, setPart<"grid", gridClass>,
                "The grid; nil for none.")
      .property("layout", partOrNil<"layout", layoutClass>, setPart<"layout", layoutClass>,
                "The layout of columns and rows; nil for none.");
}

ClassInfoBuilder<SketchLayer> withFlow(ClassInfoBuilder<SketchLayer> builder) {
  using L = Member<SketchLayer>;
  return std::move(builder)
      .property("flow", partOrNil<"flow", flowClass>, setPart<"flow", flowClass>,
                "Where a click leads in a prototype; nil for nowhere.")
      .property("isFixedToViewport", L::flag<"isFixedToViewport">, L::setFlag<"isFixedToViewport">,
                "Whether the layer stays in place when a prototype scrolls.");
}

}  // namespace kelvar
