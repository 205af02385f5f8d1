#include "sketch/classes/RulersAndGrids.h"

#include "runtime/raise.h"
#include "sketch/classes/partOfLayer.h"

namespace kelvar {
namespace {

using M = Member<ModelPart>;

const ClassInfo::Registration kRegistered[] = {ClassInfo::Registration(&rulerClass),
                                               ClassInfo::Registration(&gridClass),
                                               ClassInfo::Registration(&layoutClass)};

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
          .initializer("init", newPart<gridClass, newGrid>, "Creates a grid of 20 units.")
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
          .initializer("init", newPart<layoutClass, newLayout>, "Creates a layout of 12 columns.")
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

ClassInfoBuilder<SketchLayer> withRulersAndGrids(ClassInfoBuilder<SketchLayer> builder) {
  return std::move(builder)
      .property("horizontalRulerData", partOfLayer<"horizontalRulerData", rulerClass>,
                setPartOfLayer<"horizontalRulerData", rulerClass>,
                "The horizontal ruler with its vertical guides.")
      .property("verticalRulerData", partOfLayer<"verticalRulerData", rulerClass>,
                setPartOfLayer<"verticalRulerData", rulerClass>,
                "The vertical ruler with its horizontal guides.")
      .property("grid", partOfLayerOrNil<"grid", gridClass>, setPartOfLayer<"grid", gridClass>,
                "The grid; nil for none.")
      .property("layout", partOfLayerOrNil<"layout", layoutClass>,
                setPartOfLayer<"layout", layoutClass>,
                "The layout of columns and rows; nil for none.");
}

}  // namespace kelvar
