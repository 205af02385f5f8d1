#include "sketch/classes/newLayerJson.h"

#include "geometry/PointList.h"
#include "platform/image/BezierPath.h"
#include "runtime/raise.h"
#include "sketch/document/newStyle.h"

namespace kelvar {
namespace {

/// What every layer has.
constexpr const char* kLayer = R"({"_class":"", "do_objectID":"", "booleanOperation":-1,
  "isFixedToViewport":false, "isFlippedHorizontal":false, "isFlippedVertical":false,
  "isLocked":false, "isTemplate":false, "isVisible":true, "layerListExpandedType":0, "name":"",
  "nameIsFixed":false, "resizingConstraint":63, "resizingType":0, "rotation":0,
  "shouldBreakMaskChain":false,
  "exportOptions":{"_class":"exportOptions", "exportFormats":[], "includedLayerIds":[],
                   "layerOptions":0, "shouldTrim":false},
  "frame":{"_class":"rect", "constrainProportions":false, "height":0, "width":0, "x":0, "y":0},
  "clippingMaskMode":0, "hasClippingMask":false})";

constexpr const char* kGroup = R"({"hasClickThrough":false,
  "groupLayout":{"_class":"MSImmutableFreeformGroupLayout"}, "layers":[]})";

constexpr const char* kArtboard = R"({"hasClickThrough":true,
  "groupLayout":{"_class":"MSImmutableFreeformGroupLayout"}, "layers":[],
  "backgroundColor":{"_class":"color", "alpha":1, "blue":1, "green":1, "red":1},
  "hasBackgroundColor":false, "includeBackgroundColorInExport":true, "includeInCloudUpload":true,
  "isFlowHome":false, "resizesContent":false,
  "horizontalRulerData":{"_class":"rulerData", "base":0, "guides":[]},
  "verticalRulerData":{"_class":"rulerData", "base":0, "guides":[]}})";

constexpr const char* kMaster = R"({"includeBackgroundColorInInstance":false, "symbolID":"",
  "allowsOverrides":true, "overrideProperties":[]})";

constexpr const char* kShape = R"({"booleanOperation":-1, "edited":false, "isClosed":true,
  "pointRadiusBehaviour":1, "points":[]})";

constexpr const char* kText = R"({"attributedString":{"_class":"attributedString", "string":"Text",
    "attributes":[]},
  "automaticallyDrawOnUnderlyingPath":false, "dontSynchroniseWithSymbol":false, "glyphBounds":"",
  "lineSpacingBehaviour":2, "textBehaviour":0})";

constexpr const char* kTextAttributes = R"({
  "MSAttributedStringFontAttribute":{"_class":"fontDescriptor",
    "attributes":{"name":"Helvetica", "size":12}},
  "MSAttributedStringColorAttribute":{"_class":"color", "alpha":1, "blue":0, "green":0, "red":0},
  "paragraphStyle":{"_class":"paragraphStyle", "alignment":0}})";

constexpr const char* kBitmap = R"({"clippingMask":"{{0, 0}, {1, 1}}", "fillReplacesImage":false,
  "image":null, "intendedDPI":72})";

constexpr const char* kInstance = R"({"horizontalSpacing":0, "overrideValues":[], "scale":1,
  "symbolID":"", "verticalSpacing":0})";

constexpr const char* kSlice = R"({"backgroundColor":{"_class":"color", "alpha":1, "blue":1,
    "green":1, "red":1}, "hasBackgroundColor":false})";

/// What a kind has in addition, and what it is called.
struct Kind {
  const char* name;
  const char* title;
  const char* members[2];
};
constexpr Kind kKinds[] = {{"page", "Page", {kGroup}},
                           {"artboard", "Artboard", {kArtboard}},
                           {"symbolMaster", "Symbol", {kArtboard, kMaster}},
                           {"group", "Group", {kGroup}},
                           {"shapeGroup", "Shape", {kGroup}},
                           {"rectangle", "Rectangle", {kShape}},
                           {"oval", "Oval", {kShape}},
                           {"triangle", "Triangle", {kShape}},
                           {"polygon", "Polygon", {kShape}},
                           {"star", "Star", {kShape}},
                           {"shapePath", "Path", {kShape}},
                           {"text", "Text", {kText}},
                           {"bitmap", "Bitmap", {kBitmap}},
                           {"symbolInstance", "Symbol", {kInstance}},
                           {"slice", "Slice", {kSlice}},
                           {"MSImmutableHotspotLayer", "Hotspot", {}}};

/// A text has its attributes in its style and in the run of its characters.
void addTextAttributes(SketchJson* layer) {
  SketchJson attributes = SketchJson::parse(kTextAttributes);
  const int length = int(getString((*layer)["attributedString"], "string").size());
  (*layer)["attributedString"]["attributes"].push_back({{"_class", "stringAttribute"},
                                                        {"location", 0},
                                                        {"length", length},
                                                        {"attributes", attributes}});
  (*layer)["style"]["textStyle"] = {{"_class", "textStyle"},
                                    {"encodedAttributes", std::move(attributes)},
                                    {"verticalAlignment", 0}};
}

void addDetails(const std::string& kind, SketchJson* layer) {
  if (kind == "rectangle") {
    (*layer)["points"] = rectanglePoints();
    layer->update({{"fixedRadius", 0}, {"hasConvertedToNewRoundCorners", true}});
  } else if (kind == "oval") {
    (*layer)["points"] = ovalPoints();
  } else if (kind == "polygon") {
    (*layer)["numberOfPoints"] = 5;
  } else if (kind == "star") {
    layer->update({{"numberOfPoints", 5}, {"radius", 0.5}});
  } else if (kind == "text") {
    addTextAttributes(layer);
  } else if (kind == "symbolMaster") {
    (*layer)["symbolID"] = newObjectID();
  }
}

}  // namespace

SketchJson newLayerJson(const char* name, const QRectF& frame) {
  const auto* const kind =
      std::find_if(std::begin(kKinds), std::end(kKinds),
                   [&](const Kind& each) { return !qstrcmp(each.name, name); });
  if (kind == std::end(kKinds)) {
    raise(QStringLiteral("there are no layers of kind %1").arg(QString::fromLatin1(name)));
  }
  SketchJson layer = SketchJson::parse(kLayer);
  layer["_class"] = name;
  layer["do_objectID"] = newObjectID();
  layer["name"] = kind->title;
  layer["style"] = newStyle();
  for (const char* members : kind->members) {
    if (members) layer.update(SketchJson::parse(members));
  }
  setRect(&layer, "frame", frame);
  addDetails(kind->name, &layer);
  return layer;
}

SketchJson curvePoint(const QPointF& point, const QPointF& curveFrom, const QPointF& curveTo,
                      double cornerRadius) {
  const auto text = [](const QPointF& at) { return stringFromPoint(at).toStdString(); };
  const bool hasFrom = curveFrom != point, hasTo = curveTo != point;
  constexpr int kStraight = 1, kMirrored = 2, kDisconnected = 4;
  const int mode = !hasFrom && !hasTo                 ? kStraight
                   : curveFrom + curveTo == 2 * point ? kMirrored
                                                      : kDisconnected;
  return {{"_class", "curvePoint"},  {"cornerRadius", cornerRadius},
          {"cornerStyle", 0},        {"curveFrom", text(curveFrom)},
          {"curveMode", mode},       {"curveTo", text(curveTo)},
          {"hasCurveFrom", hasFrom}, {"hasCurveTo", hasTo},
          {"point", text(point)}};
}

SketchJson rectanglePoints(double cornerRadius) {
  SketchJson points = SketchJson::array();
  for (const QPointF corner : {QPointF(0, 0), QPointF(1, 0), QPointF(1, 1), QPointF(0, 1)}) {
    points.push_back(curvePoint(corner, corner, corner, cornerRadius));
  }
  return points;
}

SketchJson ovalPoints() {
  constexpr double kHandle = BezierPath::kQuarterHandle / 2;
  SketchJson points = SketchJson::array();
  const QPointF middle(0.5, 0.5);
  for (const QPointF out : {QPointF(0, 1), QPointF(1, 0), QPointF(0, -1), QPointF(-1, 0)}) {
    const QPointF at = middle + out / 2;
    const QPointF along(out.y() * kHandle, -out.x() * kHandle);
    points.push_back(curvePoint(at, at + along, at - along));
  }
  return points;
}

}  // namespace kelvar
