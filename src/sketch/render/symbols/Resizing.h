#pragma once

#include <QSizeF>

#include "sketch/document/SketchJson.h"

namespace kelvar::render {

/// Moves and resizes the layers in `container` as they would when its size changes, each according
/// to its "resizingConstraint": which of its edges keep their distance, and whether its sides keep
/// their length. Groups pass the change on to their layers.
void resizeLayers(SketchJson* container, const QSizeF& from, const QSizeF& to);

/// The key that marks changed text layers, whose frame no longer tells how wide the text was.
inline constexpr const char* kHasForeignFrame = "kelvar.hasForeignFrame";

}  // namespace kelvar::render
