#pragma once

#include "runtime/ClassInfo.h"
#include "sketch/document/SketchLayer.h"

namespace kelvar {

/// The points of a shape's outline, in parts of its width and height. Instances are `ModelPart`s.
const ClassInfo& curvePointClass();

/// The points in order. What is set in them goes into the layer.
QVariantList curvePointsOf(const SketchLayer& shape);
/// Replaces the points with copies.
void setCurvePoints(SketchLayer& shape, const QVariantList& points);

}  // namespace kelvar
