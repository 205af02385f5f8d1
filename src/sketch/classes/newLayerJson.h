#pragma once

#include <QRectF>

#include "sketch/document/SketchJson.h"

namespace kelvar {

/// A new layer of this kind ("text", "rectangle", "group", …) as the host makes it, with an
/// identifier of its own. Raises for an unknown kind.
SketchJson newLayerJson(const char* kind, const QRectF& frame = QRectF(0, 0, 100, 100));

/// The points of a rectangle or an oval, in the unit square.
SketchJson rectanglePoints(double cornerRadius = 0);
SketchJson ovalPoints();
SketchJson curvePoint(const QPointF& point, const QPointF& curveFrom, const QPointF& curveTo,
                      double cornerRadius = 0);

}  // namespace kelvar
