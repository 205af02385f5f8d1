#include "Parts.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <string_view>

namespace parts {
namespace {

/// The format version to write, and a version of Sketch that writes it.
constexpr int kVersion = 146;
constexpr int kCompatibilityVersion = 99;
constexpr const char* kAppVersion = "97.1";
constexpr int kBuild = 165454;
constexpr const char* kApp = "com.bohemiancoding.sketch3";

/// Handle length of a quarter circle of radius 1: 4/3 (sqrt(2) - 1).
constexpr double kQuarterHandle = 0.5522847498307936;

std::string number(double value) {
  std::array<char, 32> text{};
  const auto end = std::to_chars(text.data(), text.data() + text.size(), value).ptr;
  return {text.data(), end};
}

std::string pointString(Point point) {
  return "{" + number(point.x) + ", " + number(point.y) + "}";
}

Json color(Color color) {
  unsigned rgb = 0;
  std::sscanf(color.hex, "#%x", &rgb);
  return {{"_class", "color"},
          {"alpha", color.alpha},
          {"blue", (rgb & 255) / 255.0},
          {"green", (rgb >> 8 & 255) / 255.0},
          {"red", (rgb >> 16) / 255.0}};
}

Json contextSettings() {
  return {{"_class", "graphicsContextSettings"}, {"blendMode", 0}, {"opacity", 1}};
}

Json gradientStop(Color stop, double position) {
  return {{"_class", "gradientStop"}, {"position", position}, {"color", color(stop)}};
}

Json gradient(Color from, Color to, Point start, Point end) {
  return {{"_class", "gradient"},
          {"elipseLength", 0},
          {"from", pointString(start)},
          {"gradientType", 0},
          {"to", pointString(end)},
          {"stops", Json::array({gradientStop(from, 0), gradientStop(to, 1)})}};
}

Json fill(int type, Color plain, const Json& gradient) {
  return {{"_class", "fill"},
          {"isEnabled", true},
          {"fillType", type},
          {"color", color(plain)},
          {"contextSettings", contextSettings()},
          {"gradient", gradient},
          {"noiseIndex", 0},
          {"noiseIntensity", 0},
          {"patternFillType", 0},
          {"patternTileScale", 1}};
}

/// The properties that every layer has.
Json layer(const char* kind, const char* name, Frame frame) {
  return {{"_class", kind},
          {"do_objectID", newIdentifier()},
          {"booleanOperation", -1},
          {"isFixedToViewport", false},
          {"isFlippedHorizontal", false},
          {"isFlippedVertical", false},
          {"isLocked", false},
          {"isTemplate", false},
          {"isVisible", true},
          {"layerListExpandedType", 0},
          {"name", name},
          {"nameIsFixed", true},
          {"resizingConstraint", 63},
          {"resizingType", 0},
          {"rotation", 0},
          {"shouldBreakMaskChain", false},
          {"exportOptions",
           {{"_class", "exportOptions"},
            {"includedLayerIds", Json::array()},
            {"layerOptions", 0},
            {"shouldTrim", false},
            {"exportFormats", Json::array()}}},
          {"frame",
           {{"_class", "rect"},
            {"constrainProportions", false},
            {"height", frame.height},
            {"width", frame.width},
            {"x", frame.x},
            {"y", frame.y}}},
          {"clippingMaskMode", 0},
          {"hasClippingMask", false}};
}

Json rulerData() { return {{"_class", "rulerData"}, {"base", 0}, {"guides", Json::array()}}; }

/// A layer with child layers and rulers.
Json canvas(const char* kind, const char* name, Frame frame, const std::vector<Json>& layers) {
  Json canvas = layer(kind, name, frame);
  canvas.update({{"hasClickThrough", true},
                 {"layers", layers},
                 {"horizontalRulerData", rulerData()},
                 {"verticalRulerData", rulerData()}});
  return canvas;
}

Json curvePoint(Point at, double radius) {
  return {{"_class", "curvePoint"},       {"cornerRadius", radius}, {"cornerStyle", 0},
          {"curveFrom", pointString(at)}, {"curveMode", 1},         {"curveTo", pointString(at)},
          {"hasCurveFrom", false},        {"hasCurveTo", false},    {"point", pointString(at)}};
}

/// A point between two curves; `along` is the offset of its outgoing handle.
Json smoothPoint(Point at, Point along) {
  Json point = curvePoint(at, 0);
  point["curveFrom"] = pointString({at.x + along.x, at.y + along.y});
  point["curveTo"] = pointString({at.x - along.x, at.y - along.y});
  point["curveMode"] = 2;
  point["hasCurveFrom"] = point["hasCurveTo"] = true;
  return point;
}

Json shape(const char* kind, const char* name, Frame frame, const Json& points, const Json& style) {
  Json shape = layer(kind, name, frame);
  shape.update({{"style", style},
                {"edited", false},
                {"isClosed", true},
                {"pointRadiusBehaviour", 1},
                {"points", points}});
  return shape;
}

/// Documents count UTF-16 code units.
int lengthInUtf16(std::string_view utf8) {
  int length = 0;
  for (const char c : utf8) length += (c & 0xc0) == 0x80 ? 0 : (c & 0xf8) == 0xf0 ? 2 : 1;
  return length;
}

Json textAttributes(const char* font, double size, Color ink, Align align) {
  return {{"MSAttributedStringFontAttribute",
           {{"_class", "fontDescriptor"}, {"attributes", {{"name", font}, {"size", size}}}}},
          {"MSAttributedStringColorAttribute", color(ink)},
          {"textStyleVerticalAlignmentKey", 0},
          {"kerning", 0},
          {"paragraphStyle", {{"_class", "paragraphStyle"}, {"alignment", int(align)}}}};
}

}  // namespace

std::string identifier(int number) {
  std::array<char, 37> text{};
  std::snprintf(text.data(), text.size(), "4B454C56-4152-4000-8000-%012X", unsigned(number));
  return text.data();
}

std::string newIdentifier() {
  static int last = 0;
  return identifier(++last);
}

Json plainFill(Color plain) {
  return fill(0, plain, gradient({"#ffffff"}, {"#000000"}, {0.5, 0}, {0.5, 1}));
}

Json gradientFill(Color from, Color to, Point start, Point end) {
  return fill(1, from, gradient(from, to, start, end));
}

Json shadow(Color tint, double y, double blur) {
  return {{"_class", "shadow"},
          {"isEnabled", true},
          {"blurRadius", blur},
          {"color", color(tint)},
          {"contextSettings", contextSettings()},
          {"offsetX", 0},
          {"offsetY", y},
          {"spread", 0}};
}

Json style(const std::vector<Json>& fills, const std::vector<Json>& shadows) {
  return {{"_class", "style"},
          {"do_objectID", newIdentifier()},
          {"endMarkerType", 0},
          {"miterLimit", 10},
          {"startMarkerType", 0},
          {"windingRule", 1},
          {"borderOptions",
           {{"_class", "borderOptions"},
            {"isEnabled", true},
            {"dashPattern", Json::array()},
            {"lineCapStyle", 0},
            {"lineJoinStyle", 0}}},
          {"borders", Json::array()},
          {"colorControls",
           {{"_class", "colorControls"},
            {"isEnabled", false},
            {"brightness", 0},
            {"contrast", 1},
            {"hue", 0},
            {"saturation", 1}}},
          {"contextSettings", contextSettings()},
          {"fills", fills},
          {"innerShadows", Json::array()},
          {"shadows", shadows}};
}

Json rectangle(const char* name, Frame frame, double radius, const Json& style) {
  Json points = Json::array();
  for (const Point corner : {Point{0, 0}, {1, 0}, {1, 1}, {0, 1}}) {
    points.push_back(curvePoint(corner, radius));
  }
  Json rectangle = shape("rectangle", name, frame, points, style);
  rectangle.update({{"fixedRadius", radius},
                    {"hasConvertedToNewRoundCorners", true},
                    {"needsConvertionToNewRoundCorners", false}});
  return rectangle;
}

Json oval(const char* name, Frame frame, const Json& style) {
  const double handle = kQuarterHandle / 2;
  const Json points =
      Json::array({smoothPoint({0.5, 1}, {-handle, 0}), smoothPoint({0, 0.5}, {0, -handle}),
                   smoothPoint({0.5, 0}, {handle, 0}), smoothPoint({1, 0.5}, {0, handle})});
  return shape("oval", name, frame, points, style);
}

Json polygon(const char* name, const std::vector<Point>& corners, double radius,
             const Json& style) {
  const auto [left, right] = std::minmax_element(corners.begin(), corners.end(),
                                                 [](Point a, Point b) { return a.x < b.x; });
  const auto [top, bottom] = std::minmax_element(corners.begin(), corners.end(),
                                                 [](Point a, Point b) { return a.y < b.y; });
  const Frame frame{left->x, top->y, right->x - left->x, bottom->y - top->y};
  Json points = Json::array();
  for (const Point corner : corners) {
    points.push_back(curvePoint(
        {(corner.x - frame.x) / frame.width, (corner.y - frame.y) / frame.height}, radius));
  }
  Json polygon = shape("shapePath", name, frame, points, style);
  polygon["edited"] = true;
  return polygon;
}

Json text(const char* name, const char* words, Frame frame, const char* font, double size,
          Color ink, Align align) {
  const Json attributes = textAttributes(font, size, ink, align);
  Json text = layer("text", name, frame);
  Json textStyle = style({});
  textStyle["textStyle"] = {
      {"_class", "textStyle"}, {"encodedAttributes", attributes}, {"verticalAlignment", 0}};
  text.update(
      {{"style", textStyle},
       {"attributedString",
        {{"_class", "attributedString"},
         {"string", words},
         {"attributes", Json::array({{{"_class", "stringAttribute"},
                                      {"location", 0},
                                      {"length", lengthInUtf16(words)},
                                      {"attributes", attributes}}})}}},
       {"automaticallyDrawOnUnderlyingPath", false},
       {"dontSynchroniseWithSymbol", false},
       {"glyphBounds", "{{0, 0}, {" + number(frame.width) + ", " + number(frame.height) + "}}"},
       {"lineSpacingBehaviour", 2},
       {"textBehaviour", 2}});
  return text;
}

Json artboard(const char* name, Frame frame, Color background, const std::vector<Json>& layers) {
  Json artboard = canvas("artboard", name, frame, layers);
  artboard.update({{"backgroundColor", color(background)},
                   {"hasBackgroundColor", true},
                   {"includeBackgroundColorInExport", true},
                   {"isFlowHome", false},
                   {"resizesContent", false}});
  return artboard;
}

Json page(const char* name, const std::vector<Json>& layers) {
  return canvas("page", name, {}, layers);
}

Json documentFile(const Json& page) {
  const std::string pageID = page["do_objectID"];
  const auto container = [](const char* kind) {
    return Json{{"_class", kind}, {"do_objectID", newIdentifier()}, {"objects", Json::array()}};
  };
  Json assets{{"_class", "assetCollection"}, {"do_objectID", newIdentifier()}};
  for (const char* list :
       {"images", "colorAssets", "exportPresets", "gradientAssets", "colors", "gradients"}) {
    assets[list] = Json::array();
  }
  return {{"_class", "document"},
          {"do_objectID", newIdentifier()},
          {"assets", assets},
          {"colorSpace", 1},
          {"currentPageIndex", 0},
          {"foreignLayerStyles", Json::array()},
          {"foreignSymbols", Json::array()},
          {"foreignTextStyles", Json::array()},
          {"layerStyles", container("sharedStyleContainer")},
          {"layerTextStyles", container("sharedTextStyleContainer")},
          {"perDocumentLibraries", Json::array()},
          {"pages", Json::array({{{"_class", "MSJSONFileReference"},
                                  {"_ref_class", "MSImmutablePage"},
                                  {"_ref", "pages/" + pageID}}})}};
}

Json metaFile(const Json& page) {
  Json artboards = Json::object();
  for (const Json& layer : page["layers"]) {
    artboards[layer["do_objectID"].get<std::string>()] = {{"name", layer["name"]}};
  }
  const std::string pageID = page["do_objectID"];
  Json host{{"commit", "0000000000000000000000000000000000000000"},
            {"version", kVersion},
            {"compatibilityVersion", kCompatibilityVersion},
            {"app", kApp},
            {"variant", "NONAPPSTORE"},
            {"appVersion", kAppVersion},
            {"build", kBuild}};
  Json meta = host;
  meta.update(
      {{"pagesAndArtboards", {{pageID, {{"name", page["name"]}, {"artboards", artboards}}}}},
       {"autosaved", 0},
       {"created", host},
       {"saveHistory", Json::array({"NONAPPSTORE." + std::to_string(kBuild)})}});
  return meta;
}

Json userFile(const Json& page) {
  return {{"document", {{"pageListHeight", 85}, {"pageListCollapsed", 0}}},
          {page["do_objectID"].get<std::string>(), {{"scrollOrigin", "{0, 0}"}, {"zoomValue", 1}}}};
}

}  // namespace parts
