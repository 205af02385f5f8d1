#pragma once

#include "geometry/PointList.h"
#include "runtime/Object.h"

namespace kelvar {

/// Reads the corner points of a shape layer.
///
/// A layer is any object or map whose key path "layers" gives a list. The first child in that list,
/// an object or a map, provides a `BezierPath` under "bezierPath". Other children are ignored.
class KELVAR_EXPORT KVLayerIterator : public Object {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  /// The corner points of the first child's path, clockwise on screen. Empty if the layer, the
  /// child or the path is missing.
  PointList extractPointsFromLayer(const ObjectRef& layer) const;

  /// The same as numbers.
  static std::vector<warp::Point> cornersOfLayer(const ObjectRef& layer);
  /// The same of an object or a map. Throws `std::invalid_argument` for anything else.
  static std::vector<warp::Point> cornersOfLayerValue(const QVariant& layer);
};

}  // namespace kelvar
