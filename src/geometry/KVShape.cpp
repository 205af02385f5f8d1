#include "geometry/KVShape.h"

#include <algorithm>

#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

/// The box of the points and the origin.
QRectF boxWithOrigin(const PointList& path) {
  double left = 0, top = 0, right = 0, bottom = 0;
  for (const QString& string : path) {
    const QPointF point = pointFromString(string);
    left = std::min(left, point.x());
    top = std::min(top, point.y());
    right = std::max(right, point.x());
    bottom = std::max(bottom, point.y());
  }
  return {left, top, right - left, bottom - top};
}

double factor(uint64_t scale) { return scale == 0 ? 1.0 : double(scale); }

KVShapeRef newShape(const KVRectRef& bounds, const PointList& path) {
  return std::make_shared<KVShape>(bounds, path);
}

const ClassInfo::Registration kRegistered(&KVShape::theClass);

}  // namespace

const ClassInfo& KVShape::theClass() {
  static const ClassInfo kClass =
      Description<KVShape>("KVShape")
          .initialiser("init", [] { return newShape(nullptr, {}); })
          .initialiser("initWithBounds:path:", newShape)
          .property("bounds", &KVShape::bounds, &KVShape::setBounds)
          .property("path", &KVShape::path, &KVShape::setPath)
          .property("scale", &KVShape::scale, &KVShape::setScale)
          .operation("realSize", &KVShape::realSize)
          .operation("scaledSize", &KVShape::scaledSize)
          .operation("croppingRect", &KVShape::croppingRect)
          .operation("scaledCroppingRect", &KVShape::scaledCroppingRect)
          .operation("normalizedPoints", &KVShape::normalizedPoints)
          .classOperation("edgesLengthPoint1:point2:", &KVShape::edgesLengthPoint1)
          .classOperation("sumPoints:", &KVShape::sumPoints)
          .classOperation("pointsAreClockwised:", &KVShape::pointsAreClockwised)
          .classOperation("reversedPoints:", &KVShape::reversedPoints);
  return kClass;
}

KVShape::KVShape(KVRectRef bounds, PointList path)
    : bounds_(std::move(bounds)), path_(std::move(path)) {}

QSizeF KVShape::realSize() const { return boxWithOrigin(path_).size(); }

QSizeF KVShape::scaledSize() const { return realSize() * factor(scale_); }

KVRectRef KVShape::croppingRect() const {
  return KVRectFromCGRect(rectOrZero(bounds_).translated(-boxWithOrigin(path_).topLeft()));
}

KVRectRef KVShape::scaledCroppingRect() const {
  const double f = factor(scale_);
  const QRectF rect = croppingRect()->CGRect();
  return KVRectMake(rect.x() * f, rect.y() * f, rect.width() * f, rect.height() * f);
}

PointList KVShape::normalizedPoints() const {
  const QPointF origin = boxWithOrigin(path_).topLeft();
  PointList points;
  for (const QString& point : path_) {
    points.append(stringFromPoint(pointFromString(point) - origin));
  }
  return pointsAreClockwised(points) ? points : reversedPoints(points);
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
