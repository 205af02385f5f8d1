#include "sketch/classes/MSCurvePoint.h"

#include "geometry/PointList.h"
#include "sketch/classes/LayerClasses.h"
#include "sketch/classes/ModelPart.h"
#include "sketch/classes/newLayerJson.h"
#include "sketch/document/Layer.h"

namespace kelvar {
namespace {

using M = Member<ModelPart>;

const ClassInfo::Registration kRegistered(&curvePointClass);

template <Key key>
QPointF pointOf(const ModelPart& self) {
  return getPoint(self.json(), key.text);
}
/// A shape whose points have been moved keeps them when it is resized.
void markEdited(const ModelPart& self) {
  if (self.layer()) self.layer()->edit().change()["edited"] = true;
}
template <Key key>
void setPointOf(ModelPart& self, const QPointF& point) {
  numberJson(point.x(), key.text);
  numberJson(point.y(), key.text);
  self.change()[key.text] = stringFromPoint(point).toStdString();
  markEdited(self);
}

ModelPartRef atPoint(const QPointF& point) {
  return std::make_shared<ModelPart>(curvePointClass(), curvePoint(point, point, point));
}

}  // namespace

const ClassInfo& curvePointClass() {
  static const ClassInfo kClass =
      ClassInfoBuilder<ModelPart>("MSCurvePoint", ModelPart::staticClassInfo())
          .classOperation("pointWithPoint:", atPoint, "Creates a corner without handles.")
          .property("point", pointOf<"point">, setPointOf<"point">,
                    "Where it is, in parts of the shape's width and height.")
          .property("curveFrom", pointOf<"curveFrom">, setPointOf<"curveFrom">,
                    "The handle of the curve that begins here.")
          .property("curveTo", pointOf<"curveTo">, setPointOf<"curveTo">,
                    "The handle of the curve that ends here.")
          .property("hasCurveFrom", M::flag<"hasCurveFrom">, M::setFlag<"hasCurveFrom">,
                    "Whether a curve begins here.")
          .property("hasCurveTo", M::flag<"hasCurveTo">, M::setFlag<"hasCurveTo">,
                    "Whether a curve ends here.")
          .property("curveMode", M::whole<"curveMode">, M::setWhole<"curveMode">,
                    "How the handles depend on each other: straight (1), mirrored (2), asymmetric "
                    "(3) or not at all (4).")
          .property("cornerRadius", M::number<"cornerRadius">, M::setNumber<"cornerRadius">,
                    "The radius of the corner.");
  return kClass;
}

QVariantList curvePointsOf(const SketchLayer& shape) {
  QVariantList points;
  const size_t count = getArray(shape.node().json(), "points").size();
  for (size_t i = 0; i < count; ++i) {
    points.append(toVariant(std::make_shared<ModelPart>(curvePointClass(), refTo(shape),
                                                        ModelPart::Place("/points") / i)));
  }
  return points;
}

void setCurvePoints(SketchLayer& shape, const QVariantList& points) {
  SketchJson copies = SketchJson::array();
  for (const QVariant& each : points) {
    const auto point = std::dynamic_pointer_cast<ModelPart>(each.value<ObjectRef>());
    copies.push_back(partOfClass(point, curvePointClass(), "setPoints:").json());
  }
  SketchJson& json = shape.edit().change();
  json["points"] = std::move(copies);
  json["edited"] = true;
}

}  // namespace kelvar
