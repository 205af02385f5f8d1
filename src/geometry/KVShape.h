#pragma once

#include <QSizeF>
#include <cstdint>

#include "geometry/KVRect.h"
#include "geometry/PointList.h"

namespace kelvar {

/// A four-cornered target layer: its frame in the document and its corner points.
///
/// Built once per mapping, then read. Nothing is cached: sizes are computed from bounds, path and
/// scale at each call. Lengths are in document units, y down. The extent of the points always
/// includes the layer's origin. Any number of points is accepted.
class KELVAR_EXPORT KVShape : public Object {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  /// `bounds` may be null (the zero rectangle). `path` is in the layer's own coordinates, in
  /// drawing order. The scale starts at 1.
  KVShape(KVRectRef bounds, PointList path);

  KVRectRef bounds() const { return bounds_; }
  void setBounds(KVRectRef bounds) { bounds_ = std::move(bounds); }
  PointList path() const { return path_; }
  void setPath(PointList path) { path_ = std::move(path); }
  /// Render scale; 0 counts as 1.
  uint64_t scale() const { return scale_; }
  void setScale(uint64_t scale) { scale_ = scale; }

  /// Extent of the points and the layer's origin, unscaled. (0, 0) for an empty path.
  QSizeF realSize() const;
  /// `realSize` times the scale.
  QSizeF scaledSize() const;

  /// The bounds, moved right and down by the distance that the points extend past the layer's left
  /// and top edge.
  KVRectRef croppingRect() const;
  /// `croppingRect` with every component, including the origin, multiplied by the scale.
  KVRectRef scaledCroppingRect() const;

  /// The points moved so that no coordinate is negative, clockwise on screen. The first drawn point
  /// stays first.
  PointList normalizedPoints() const;

  /// `windingTerm`.
  static double edgesLengthPoint1(const QPointF& point1, const QPointF& point2);
  /// `windingSum`.
  static double sumPoints(const PointList& points);
  /// `isClockwise`.
  static bool pointsAreClockwised(const PointList& points);
  /// Reverses the winding but keeps the starting corner: p0, p1, p2, p3 becomes p0, p3, p2, p1.
  static PointList reversedPoints(const PointList& points);

 private:
  KVRectRef bounds_;
  PointList path_;
  uint64_t scale_ = 1;
};

using KVShapeRef = std::shared_ptr<KVShape>;

}  // namespace kelvar
