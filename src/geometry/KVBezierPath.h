#pragma once

#include "geometry/PointList.h"
#include "platform/image/BezierPath.h"

namespace kelvar {

class ClassInfo;

/// Converts between vector paths and point lists. Has no state and no instances, and never fails:
/// missing values count as empty.
class KELVAR_EXPORT KVBezierPath {
 public:
  KVBezierPath() = delete;
  static const ClassInfo& staticClassInfo();

  /// The points of the path in drawing order, with curves flattened, up to the first close. A line
  /// to the current point adds nothing, and a close removes a last point that equals the first.
  /// Every move, wherever it occurs, goes to the very first point of the path.
  static PointList pointsFromBezierPath(const BezierPath& path);

  /// Moves to the first point, draws lines to the others, and closes. An empty list gives only the
  /// close.
  static BezierPath bezierPathWithPoints(const PointList& points);

  /// `windingTerm`. Despite the name, not a length.
  static double edgesLengthPoint1(const QPointF& point1, const QPointF& point2);
  /// `windingSum`.
  static double sumPoints(const PointList& points);
  /// `isClockwise` for the points of the path.
  static bool bezierPathIsClockwise(const BezierPath& path);
  static BezierPath bezierPathReversed(const BezierPath& path);
};

}  // namespace kelvar
