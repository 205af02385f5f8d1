#include <gtest/gtest.h>

#include "sketch/render/TinyDocument.h"

namespace kelvar::render {
namespace {

/// The corners of a rectangle, each with this radius, as curve points in the manner of all
/// versions.
SketchJson corners(double radius) {
  SketchJson points = SketchJson::array();
  for (const char* at : {"{0, 0}", "{1, 0}", "{1, 1}", "{0, 1}"}) {
    points.push_back({{"_class", "curvePoint"},
                      {"cornerRadius", radius},
                      {"curveFrom", at},
                      {"curveMode", 1},
                      {"curveTo", at},
                      {"hasCurveFrom", false},
                      {"hasCurveTo", false},
                      {"point", at}});
  }
  return points;
}

SketchJson redStyle(const char* json) {
  SketchJson style = SketchJson::parse(json);
  style["_class"] = "style";
  SketchJson red = fill(QColor(255, 0, 0));
  red["_class"] = "fill";
  red["isEnabled"] = true;
  style["fills"] = SketchJson::array({red});
  return style;
}

/// Sketch 43: points in a "path", flags as numbers, "decorations" at the ends of lines.
SketchJson shapeOf43() {
  SketchJson rectangle = layer("rectangle", frame(0, 0, 20, 20));
  rectangle["isVisible"] = 1;
  rectangle["path"] = {
      {"_class", "path"}, {"isClosed", 1}, {"pointRadiusBehaviour", 1}, {"points", corners(0)}};
  SketchJson group = container("shapeGroup", frame(10, 10, 20, 20), {rectangle});
  group["style"] =
      redStyle(R"({"startDecorationType":0,"endDecorationType":0,"miterLimit":10,"blur":
                   {"_class":"blur","isEnabled":0,"center":"{0.5, 0.5}","radius":10,"type":0}})");
  return with(group, {{"hasClippingMask", 0}, {"windingRule", 1}, {"clippingMaskMode", 0}});
}

/// Sketch 50: the points in the shape itself, still the only child of a group.
SketchJson shapeOf50() {
  const SketchJson rectangle = with(
      layer("rectangle", frame(0, 0, 20, 20)),
      {{"isClosed", true}, {"pointRadiusBehaviour", 1}, {"points", corners(0)}, {"edited", false}});
  SketchJson group = container("shapeGroup", frame(10, 10, 20, 20), {rectangle});
  group["style"] = redStyle(R"({"endDecorationType":0,"miterLimit":10,"startDecorationType":0})");
  return group;
}

/// From Sketch 52 on shapes stand by themselves.
SketchJson shapeOf52() {
  return with(rectangle(10, 10, 20, 20,
                        redStyle(R"({"startMarkerType":0,"endMarkerType":0,"windingRule":1})")),
              {{"isClosed", true}, {"pointRadiusBehaviour", 1}, {"points", corners(0)}});
}

/// Sketch 58 and later: every group says how it is laid out, and every style has all parts.
SketchJson shapeOf58() {
  SketchJson shape = shapeOf52();
  shape["style"].update(SketchJson::parse(
      R"({"do_objectID":"STYLE","borders":[],"shadows":[],"innerShadows":[],
          "borderOptions":{"_class":"borderOptions","isEnabled":true,"dashPattern":[],
                           "lineCapStyle":0,"lineJoinStyle":0},
          "blur":{"_class":"blur","isEnabled":false,"center":"{0.5, 0.5}","motionAngle":0,
                  "radius":10,"saturation":1,"type":0},
          "contextSettings":{"_class":"graphicsContextSettings","blendMode":0,"opacity":1},
          "colorControls":{"_class":"colorControls","isEnabled":false,"brightness":0,
                           "contrast":1,"hue":0,"saturation":1}})"));
  shape["style"]["fills"][0]["color"]["swatchID"] = "SWATCH";
  const SketchJson moved = with(shape, {{"frame", frame(0, 0, 20, 20)}});
  return with(container("group", frame(10, 10, 20, 20), {moved}),
              {{"groupLayout", {{"_class", "MSImmutableFreeformGroupLayout"}}}});
}

/// 2025: a frame with a ground, several blurs, corners in the style.
SketchJson shapeOf2025() {
  SketchJson style = redStyle(R"({"blurs":[],"corners":{"radii":[0],"style":0,"smoothing":0}})");
  return with(container("group", frame(10, 10, 20, 20), {}),
              {{"groupBehavior", 1},
               {"clippingBehavior", 0},
               {"style", style},
               {"groupLayout", {{"_class", "MSImmutableFlexGroupLayout"}, {"flexDirection", 1}}}});
}

/// The same red square in the manner of each version.
TEST(DocumentVersionsTest, RenderAlike) {
  const struct {
    int version;
    SketchJson shape;
  } cases[] = {{88, shapeOf43()},  {93, shapeOf43()},   {101, shapeOf50()}, {112, shapeOf52()},
               {118, shapeOf52()}, {119, shapeOf52()},  {120, shapeOf58()}, {121, shapeOf58()},
               {123, shapeOf58()}, {130, shapeOf58()},  {134, shapeOf58()}, {136, shapeOf58()},
               {146, shapeOf58()}, {164, shapeOf2025()}};
  for (const auto& [version, shape] : cases) {
    TinyDocument tiny;
    tiny.version = version;
    tiny.layers = {shape};
    const Drawing drawing = drawDocument(tiny, 40, 40);
    for (const auto& [x, y, isRed] :
         {std::tuple{10, 10, true}, {29, 29, true}, {9, 20, false}, {30, 20, false}}) {
      EXPECT_EQ(drawing.at(x, y), isRed ? QColor(255, 0, 0) : QColor(0, 0, 0, 0))
          << version << " at " << x << "," << y;
    }
    EXPECT_EQ(drawing.warnings, QStringList()) << version;
  }
}

}  // namespace
}  // namespace kelvar::render
