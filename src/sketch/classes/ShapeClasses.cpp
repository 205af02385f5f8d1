#include "runtime/raise.h"
#include "sketch/classes/LayerClasses.h"
#include "sketch/classes/MSCurvePoint.h"
#include "sketch/classes/newLayerJson.h"
#include "sketch/classes/shapeWithPath.h"

namespace kelvar {
namespace {

using Self = SketchLayer;
using M = Member<SketchLayer>;

const ClassInfo::Registration kRegistered[] = {
    ClassInfo::Registration(&shapeLayerClass), ClassInfo::Registration(&rectangleClass),
    ClassInfo::Registration(&ovalClass),       ClassInfo::Registration(&triangleClass),
    ClassInfo::Registration(&polygonClass),    ClassInfo::Registration(&starClass)};

double cornerRadius(const Self& self) {
  const SketchJson& points = getArray(self.node().json(), "points");
  return points.empty() ? getNumber(self.node().json(), "fixedRadius")
                        : getNumber(points[0], "cornerRadius");
}
/// All corners get the radius; documents also have it beside them.
void setCornerRadius(Self& self, double radius) {
  const SketchJson json = numberJson(radius, "cornerRadius");
  SketchJson& layer = self.edit().change();
  layer["fixedRadius"] = json;
  if (!get(layer, "points").is_array()) return;
  for (SketchJson& point : layer["points"]) {
    if (point.is_object()) point["cornerRadius"] = json;
  }
}

template <Key kind>
ClassInfoBuilder<Self> shape(const char* name, Sentence creates) {
  return ClassInfoBuilder<Self>(name, shapeLayerClass())
      .initializer("init", newLayer<kind>, creates)
      .initializer("initWithFrame:", newLayerWithFrame<kind>, creates);
}

/// "8/8/0/0", from the top left corner clockwise.
QString cornerRadii(const Self& self) {
  QStringList radii;
  for (const SketchJson& point : getArray(self.node().json(), "points")) {
    radii.append(QString::number(getNumber(point, "cornerRadius")));
  }
  return radii.join(u'/');
}
/// One radius for each corner, or one for all.
void setCornerRadii(Self& self, const QString& components) {
  QString text = components;
  QList<double> radii;
  for (const QString& part : text.replace(u';', u'/').split(u'/')) {
    bool isNumber = false;
    radii.append(part.toDouble(&isNumber));
    if (isNumber && radii.last() >= 0) continue;
    raise(QStringLiteral("\"%1\" is not a list of radii such as \"8/8/0/0\"").arg(components));
  }
  const qsizetype count = qsizetype(getArray(self.node().json(), "points").size());
  if (radii.size() != 1 && radii.size() != count) {
    raise(QStringLiteral("\"%1\" has %2 radii, not 1 or %3")
              .arg(components)
              .arg(radii.size())
              .arg(count));
  }
  setCornerRadius(self, radii.first());
  if (radii.size() == 1) return;
  SketchJson& points = self.edit().change()["points"];
  for (qsizetype i = 0; i < count; ++i) {
    if (!points[size_t(i)].is_object()) continue;
    points[size_t(i)]["cornerRadius"] = numberJson(radii[i], "cornerRadius");
  }
}

void append(const BezierPath& path, BezierPath* whole) {
  for (const BezierPath::Element& each : path.elements()) {
    switch (each.kind) {
      case BezierPath::Kind::Move:
        whole->moveTo(each.end());
        break;
      case BezierPath::Kind::Line:
        whole->lineTo(each.end());
        break;
      case BezierPath::Kind::Curve:
        whole->curveTo(each.end(), each.points[0], each.points[1]);
        break;
      case BezierPath::Kind::Close:
        whole->close();
        break;
    }
  }
}

}  // namespace

BezierPath outlineOf(const SketchLayer& layer) {
  if (layer.node().properties().kind != LayerKind::ShapeGroup) return layer.path();
  BezierPath outline;
  for (const SketchLayerRef& each : layer.children()) append(each->bezierPath(), &outline);
  return outline;
}

BezierPath pathInParent(const SketchLayer& layer) {
  return outlineOf(layer).mapped(layer.transform());
}
BezierPath pathInFrame(const SketchLayer& layer) {
  const QPointF origin = layer.frameRect().topLeft();
  return outlineOf(layer).mapped(QTransform::fromTranslate(origin.x(), origin.y()));
}

const ClassInfo& shapeLayerClass() {
  static const ClassInfo kClass =
      ClassInfoBuilder<Self>("MSShapePathLayer", styledLayerClass())
          .initializer("init", newLayer<"shapePath">, "Creates a shape without points.")
          .classOperation("layerWithPath:", layerWithPath,
                          "Creates a shape that has the outline of a path.")
          .classOperation("shapeWithBezierPath:", layerWithPath,
                          "Creates a shape that has the outline of a path.")
          .operation(
              "layers", [](const Self&) { return QVariantList(); },
              "Returns an empty list: only its key path leads to the shape itself.")
          .operation("bezierPathWithTransforms", pathInParent,
                     "Returns the outline in the coordinates of its parent, rotated and mirrored "
                     "like the layer.")
          .operation("pathInFrameWithTransforms", pathInParent,
                     "Returns the outline in the coordinates of its parent, rotated and mirrored "
                     "like the layer.")
          .operation("pathInFrame", pathInFrame,
                     "Returns the outline in the coordinates of its parent, neither rotated nor "
                     "mirrored.")
          .property("isClosed", M::flag<"isClosed", true>, M::setFlag<"isClosed">,
                    "Whether the outline ends where it began.")
          .property("edited", M::flag<"edited">, "Whether the points were moved by hand.")
          .property("booleanOperation", M::whole<"booleanOperation", -1>,
                    M::setWhole<"booleanOperation">,
                    "How it is combined with the shape below: none (-1), union (0), subtract (1), "
                    "intersect (2) or difference (3).")
          .property("points", curvePointsOf, setCurvePoints, "The points of the outline.")
          .property(
              "numberOfPoints",
              [](const Self& self) { return int(getArray(self.node().json(), "points").size()); },
              "How many points the outline has.");
  return kClass;
}

const ClassInfo& rectangleClass() {
  static const ClassInfo kClass =
      shape<"rectangle">("MSRectangleShape", "Creates a rectangle.")
          .classOperation(
              "rectangleWithRect:cornerRadius:",
              [](const QRectF& rect, double radius) {
                const SketchLayerRef layer = newLayerOfKind("rectangle", rect);
                setCornerRadius(*layer, radius);
                return layer;
              },
              "Creates a rectangle with rounded corners.")
          .property("cornerRadiusString", cornerRadii, setCornerRadii,
                    "The radii of the corners, such as 8/8/0/0, from the top left one clockwise.")
          .operation("setCornerRadiusFromComponents:", setCornerRadii,
                     "Sets the radii of the corners, such as 8/8/0/0, from the top left one "
                     "clockwise; one radius is for all.")
          .property("cornerRadiusFloat", cornerRadius, setCornerRadius,
                    "The radius of the corners; of the first one, if they differ.")
          .property("fixedRadius", cornerRadius, setCornerRadius,
                    "The radius of the corners; of the first one, if they differ.");
  return kClass;
}

const ClassInfo& ovalClass() {
  static const ClassInfo kClass = shape<"oval">("MSOvalShape", "Creates an oval.");
  return kClass;
}

const ClassInfo& triangleClass() {
  static const ClassInfo kClass = shape<"triangle">("MSTriangleShape", "Creates a triangle.");
  return kClass;
}

const ClassInfo& polygonClass() {
  static const ClassInfo kClass =
      shape<"polygon">("MSPolygonShape", "Creates a pentagon.")
          .property("numberOfPoints", M::whole<"numberOfPoints", 5>, M::setWhole<"numberOfPoints">,
                    "How many corners it has.");
  return kClass;
}

const ClassInfo& starClass() {
  static const ClassInfo kClass =
      shape<"star">("MSStarShape", "Creates a star.")
          .property("numberOfPoints", M::whole<"numberOfPoints", 5>, M::setWhole<"numberOfPoints">,
                    "How many tips it has.")
          .property("radius", M::number<"radius", std::ratio<1, 2>>, M::setNumber<"radius">,
                    "How far out its inner corners are, between 0 and 1.");
  return kClass;
}

}  // namespace kelvar
