#pragma once

#include "sketch/document/SketchLayer.h"

namespace kelvar {

/// A shape group of a path or of a shape layer. Raises for anything else and for a path without
/// points.
SketchLayerRef shapeWithPath(const QVariant& path);
/// A shape layer that has the frame and the points of a path. Raises unless the path has one part.
SketchLayerRef layerWithPath(const BezierPath& path);

}  // namespace kelvar
