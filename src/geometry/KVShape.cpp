#include "geometry/KVShape.h"

#include <algorithm>

#include "runtime/ClassInfo.h"
#include "scene/QuadPlacement.h"

namespace kelvar {
namespace {

BoxWithOrigin boxOf(const PointList& path) { return boxWithOrigin(pointsFromStrings(path)); }

double factor(uint64_t scale) { return scale == 0 ? 1.0 : double(scale); }

KVShapeRef newShape(const KVRectRef& bounds, const PointList& path) {
  return std::make_shared<KVShape>(bounds, path);
}

const ClassInfo::Registration kRegistered(&KVShape::staticClassInfo);

}  // namespace

const ClassInfo& KVShape::staticClassInfo() {
  static const ClassInfo kClass =
      ClassInfoBuilder<KVShape>("KVShape")
          .initializer(
              "init", [] { return newShape(nullptr, {}); },
              "Creates a shape with a zero frame and no points.")
          .initializer("initWithBounds:path:", newShape,
                       "Creates a shape from a layer's frame and its corners in the layer's own "
                       "coordinates.")
          .property("bounds", &KVShape::bounds, &KVShape::setBounds,
                    "The layer's frame in the document; nil counts as the zero rectangle.")
          .property("path", &KVShape::path, &KVShape::setPath,
                    "The corner points in drawing order, in the layer's own coordinates.")
          .property("scale", &KVShape::scale, &KVShape::setScale,
                    "Factor for the scaled sizes; 0 counts as 1.")
          .operation("realSize", &KVShape::realSize,
                     "Returns the extent of the points together with the layer's origin, unscaled.")
          .operation("scaledSize", &KVShape::scaledSize, "Returns `realSize` times the scale.")
          .operation("croppingRect", &KVShape::croppingRect,
                     "Returns the bounds shifted right and down by as much as the points extend "
                     "past the layer's left and top edges.")
          .operation("scaledCroppingRect", &KVShape::scaledCroppingRect,
                     "Returns `croppingRect` with origin and size times the scale.")
          .operation("normalizedPoints", &KVShape::normalizedPoints,
                     "Returns the points shifted so that none is negative, in clockwise order, "
                     "starting with the same point.")
          .classOperation("edgesLengthPoint1:point2:", &KVShape::edgesLengthPoint1,
                          "Returns the edge's term (x2 - x1) (y1 + y2) of the winding sum; despite "
                          "the name, not a length.")
          .classOperation("sumPoints:", &KVShape::sumPoints,
                          "Returns the winding sum of the points: minus twice the area if they run "
                          "clockwise on screen.")
          .classOperation(
              "pointsAreClockwised:", &KVShape::pointsAreClockwised,
              "Returns whether the points run clockwise on screen; points without area do.")
          .classOperation(
              "reversedPoints:", &KVShape::reversedPoints,
              "Returns the points in the opposite direction, starting with the same point.");
  return kClass;
}

KVShape::KVShape(KVRectRef bounds, PointList path)
    : bounds_(std::move(bounds)), path_(std::move(path)) {}

QSizeF KVShape::realSize() const {
  const BoxWithOrigin box = boxOf(path_);
  return {box.width(), box.height()};
}

QSizeF KVShape::scaledSize() const { return realSize() * factor(scale_); }

KVRectRef KVShape::croppingRect() const {
  const BoxWithOrigin box = boxOf(path_);
  return KVRectFromCGRect(rectOrZero(bounds_).translated(-box.left, -box.top));
}

KVRectRef KVShape::scaledCroppingRect() const {
  const double f = factor(scale_);
  const QRectF rect = croppingRect()->CGRect();
  return KVRectMake(rect.x() * f, rect.y() * f, rect.width() * f, rect.height() * f);
}

PointList KVShape::normalizedPoints() const {
  std::vector<warp::Point> points = pointsFromStrings(path_);
  normalizePoints(points);
  return stringsFromPoints(points);
}

double KVShape::edgesLengthPoint1(const QPointF& point1, const QPointF& point2) {
  return windingTerm(point1, point2);
}

double KVShape::sumPoints(const PointList& points) { return windingSum(points); }

bool KVShape::pointsAreClockwised(const PointList& points) { return isClockwise(points); }

PointList KVShape::reversedPoints(const PointList& points) {
  PointList reversed = points;
  if (reversed.size() > 1) std::reverse(reversed.begin() + 1, reversed.end());
  return reversed;
}

}  // namespace kelvar
