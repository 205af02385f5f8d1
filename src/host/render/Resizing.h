#pragma once

#include <QSizeF>

#include "host/SketchJson.h"

namespace kelvar::render {

/// Moves and resizes the layers in `container` as they would when its size changes, each by its
/// "resizingConstraint": which of its edges keep their distance, and whether its sides keep their
/// length. Groups pass the change on.
void resizeLayers(SketchJson* container, const QSizeF& from, const QSizeF& to);

}  // namespace kelvar::render
