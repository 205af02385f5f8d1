#include "sketch/document/newStyle.h"

namespace kelvar {
namespace {

constexpr const char* kStyle = R"({"_class":"style", "do_objectID":"", "endMarkerType":0,
  "miterLimit":10, "startMarkerType":0, "windingRule":1,
  "borderOptions":{"_class":"borderOptions", "isEnabled":true, "dashPattern":[],
                   "lineCapStyle":0, "lineJoinStyle":0},
  "borders":[],
  "colorControls":{"_class":"colorControls", "isEnabled":false, "brightness":0, "contrast":1,
                   "hue":0, "saturation":1},
  "contextSettings":{"_class":"graphicsContextSettings", "blendMode":0, "opacity":1},
  "fills":[], "innerShadows":[], "shadows":[]})";

SketchJson gray(double white) {
  return {{"_class", "color"}, {"alpha", 1}, {"blue", white}, {"green", white}, {"red", white}};
}

SketchJson newPaint(const char* kind, double white) {
  return {{"_class", kind},
          {"isEnabled", true},
          {"fillType", 0},
          {"color", gray(white)},
          {"contextSettings", newContextSettings()},
          {"gradient", newGradient()}};
}

/// How an image is laid out, and the noise that every fill can have.
void addPattern(SketchJson* fill, int type) {
  fill->update({{"noiseIndex", 0},
                {"noiseIntensity", 0},
                {"patternFillType", type},
                {"patternTileScale", 1}});
}

}  // namespace

SketchJson newStyle() {
  SketchJson style = SketchJson::parse(kStyle);
  style["do_objectID"] = newObjectID();
  return style;
}

SketchJson newContextSettings() {
  return {{"_class", "graphicsContextSettings"}, {"blendMode", 0}, {"opacity", 1}};
}

SketchJson newGradient() {
  const auto stop = [](int position, double white) {
    return SketchJson{{"_class", "gradientStop"}, {"color", gray(white)}, {"position", position}};
  };
  return {{"_class", "gradient"}, {"elipseLength", 0},
          {"from", "{0.5, 0}"},   {"gradientType", 0},
          {"to", "{0.5, 1}"},     {"stops", SketchJson::array({stop(0, 1), stop(1, 0)})}};
}

SketchJson newFill() {
  constexpr int kFill = 1;
  SketchJson fill = newPaint("fill", 0.847);
  addPattern(&fill, kFill);
  return fill;
}

SketchJson newStretchedImageFill(const QString& imageFile) {
  constexpr int kPattern = 4, kStretch = 2;
  SketchJson fill = newPaint("fill", 0.847);
  fill["fillType"] = kPattern;
  fill["image"] = {{"_class", "MSJSONFileReference"},
                   {"_ref_class", "MSImageData"},
                   {"_ref", imageFile.toStdString()}};
  addPattern(&fill, kStretch);
  return fill;
}

SketchJson newBorder() {
  SketchJson border = newPaint("border", 0.592);
  border.update({{"position", 1}, {"thickness", 1}});
  return border;
}

SketchJson newShadow(const char* kind) {
  return {{"_class", kind},
          {"isEnabled", true},
          {"blurRadius", 4},
          {"color", {{"_class", "color"}, {"alpha", 0.5}, {"blue", 0}, {"green", 0}, {"red", 0}}},
          {"contextSettings", newContextSettings()},
          {"offsetX", 0},
          {"offsetY", 2},
          {"spread", 0}};
}

}  // namespace kelvar
