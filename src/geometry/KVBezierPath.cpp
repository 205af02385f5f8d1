#include "geometry/KVBezierPath.h"

#include "platform/Log.h"
#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&KVBezierPath::theClass);

}  // namespace

const ClassInfo& KVBezierPath::theClass() {
  static const ClassInfo kClass =
      Description<KVBezierPath>("KVBezierPath")
          .classOperation("pointsFromBezierPath:", &KVBezierPath::pointsFromBezierPath)
          .classOperation("bezierPathWithPoints:", &KVBezierPath::bezierPathWithPoints)
          .classOperation("edgesLengthPoint1:point2:", &KVBezierPath::edgesLengthPoint1)
          .classOperation("sumPoints:", &KVBezierPath::sumPoints)
          .classOperation("bezierPathIsClockwise:", &KVBezierPath::bezierPathIsClockwise)
          .classOperation("bezierPathReversed:", &KVBezierPath::bezierPathReversed);
  return kClass;
}

PointList KVBezierPath::pointsFromBezierPath(const BezierPath& path) {
  using Kind = BezierPath::Kind;
  const QList<BezierPath::Element> elements = path.flattened().elements();
  PointList points;
  QString last = stringFromPoint({0, 0});
  for (const BezierPath::Element& element : elements) {
    if (element.kind == Kind::Move) {
      const QString point = stringFromPoint(elements.first().end());
      logLine(u"Move line from %@ to %@", {last, point});
      last = point;
    } else if (element.kind == Kind::Line) {
      const QString point = stringFromPoint(element.end());
      if (points.isEmpty()) points.append(last);
      if (point != last) points.append(point);
      last = point;
    } else if (element.kind == Kind::Close) {
      const QString point = stringFromPoint(elements.first().end());
      logLine(u"Close line from %@ to %@", {last, point});
      if (last == point && !points.isEmpty()) points.removeLast();
      break;
    }
  }
  return points;
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
  return isClockwise(pointsFromBezierPath(path));
}

BezierPath KVBezierPath::bezierPathReversed(const BezierPath& path) { return path.reversed(); }

}  // namespace kelvar
