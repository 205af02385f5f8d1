#include "geometry/KVBezierPath.h"

#include "geometry/cornersOfPath.h"
#include "runtime/ClassInfo.h"
#include "scene/QuadPlacement.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&KVBezierPath::staticClassInfo);

}  // namespace

const ClassInfo& KVBezierPath::staticClassInfo() {
  static const ClassInfo kClass =
      ClassInfoBuilder<KVBezierPath>("KVBezierPath")
          .classOperation("pointsFromBezierPath:", &KVBezierPath::pointsFromBezierPath,
                          "Returns the corners of the path's outline in drawing order, with curves "
                          "flattened, as \"{x, y}\" strings.")
          .classOperation("bezierPathWithPoints:", &KVBezierPath::bezierPathWithPoints,
                          "Creates a closed path with straight edges through the points.")
          .classOperation("edgesLengthPoint1:point2:", &KVBezierPath::edgesLengthPoint1,
                          "Returns the edge's term (x2 - x1) (y1 + y2) of the winding sum; despite "
                          "the name, not a length.")
          .classOperation("sumPoints:", &KVBezierPath::sumPoints,
                          "Returns the winding sum of the polygon: minus twice its area if it runs "
                          "clockwise on screen.")
          .classOperation("bezierPathIsClockwise:", &KVBezierPath::bezierPathIsClockwise,
                          "Returns whether the path's corners run clockwise on screen; a path "
                          "without area does.")
          .classOperation("bezierPathReversed:", &KVBezierPath::bezierPathReversed,
                          "Returns the path drawn in the opposite direction.");
  return kClass;
}

PointList KVBezierPath::pointsFromBezierPath(const BezierPath& path) {
  return stringsFromPoints(cornersOfPath(path));
}

BezierPath KVBezierPath::bezierPathWithPoints(const PointList& points) {
  BezierPath path;
  for (qsizetype i = 0; i < points.size(); ++i) {
    const QPointF point = pointFromString(points[i]);
    i == 0 ? path.moveTo(point) : path.lineTo(point);
  }
  path.close();
  return path;
}

double KVBezierPath::edgesLengthPoint1(const QPointF& point1, const QPointF& point2) {
  return windingTerm(point1, point2);
}

double KVBezierPath::sumPoints(const PointList& points) { return windingSum(points); }

bool KVBezierPath::bezierPathIsClockwise(const BezierPath& path) {
  return isClockwise(cornersOfPath(path));
}

BezierPath KVBezierPath::bezierPathReversed(const BezierPath& path) { return path.reversed(); }

}  // namespace kelvar
