#pragma once

#include <QSizeF>

#include "host/SketchJson.h"
#include "platform/BezierPath.h"

namespace kelvar {

/// The outline of a shape layer, from (0, 0) to `size`, with its corners rounded.
///
/// The points that the document stores are taken, edited or not; where there are none, those of
/// the kind of shape. Artboards and frames are rectangles. Empty for what is no shape.
BezierPath sketchPath(const SketchJson& shape, const QSizeF& size);

}  // namespace kelvar
