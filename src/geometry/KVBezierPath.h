#pragma once

#include "geometry/PointList.h"
#include "platform/BezierPath.h"

namespace kelvar {

class ClassInfo;

/// From vector paths to point lists and back. No state, no instances, no errors: what is missing
/// reads as empty.
class KELVAR_EXPORT KVBezierPath {
 public:
  KVBezierPath() = delete;
  static const ClassInfo& theClass();

  /// The corners of the path's outline in drawing order, curves flattened, up to the first close.
  /// A line to where the pen already is adds nothing, and a close takes back a last point that
  /// equals the first. Every move, wherever it stands, reads the path's very first point.
  static PointList pointsFromBezierPath(const BezierPath& path);

  /// Move to the first point, lines to the others, close. Only the close for an empty list.
  static BezierPath bezierPathWithPoints(const PointList& points);

  /// `windingTerm`. Not a length, whatever the name says.
  static double edgesLengthPoint1(const QPointF& point1, const QPointF& point2);
  /// `windingSum`.
  static double sumPoints(const PointList& points);
  /// `isClockwise` of the path's points.
  static bool bezierPathIsClockwise(const BezierPath& path);
  static BezierPath bezierPathReversed(const BezierPath& path);
};

}  // namespace kelvar
