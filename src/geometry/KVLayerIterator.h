#pragma once

#include "geometry/PointList.h"
#include "runtime/Object.h"

namespace kelvar {

/// Reads a shape layer's corner points out of a document.
///
/// A layer is any object that answers the key path "layers" with a list; its first child, an
/// object or a map, answers "bezierPath" with a `BezierPath`. Further children are not read.
class KELVAR_EXPORT KVLayerIterator : public Object {
 public:
  static const ClassInfo& theClass();
  const ClassInfo& classInfo() const override { return theClass(); }

  /// The corner points of the first child's path, turned clockwise on screen. Empty when the
  /// layer, the child or the path is missing.
  PointList extractPointsFromLayer(const ObjectRef& layer) const;
};

}  // namespace kelvar
