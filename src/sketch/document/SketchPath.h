#pragma once

#include <QSizeF>

#include "platform/image/BezierPath.h"
#include "sketch/document/SketchJson.h"

namespace kelvar {

/// The outline of a shape layer, from (0, 0) to `size`, with its corners rounded.
///
/// Uses the points that the document stores, whether or not the user has edited them; if it stores
/// none, those of the kind of shape. Artboards and frames are rectangles. Empty for other kinds of
/// layers.
BezierPath sketchPath(const SketchJson& shape, const QSizeF& size);

}  // namespace kelvar
