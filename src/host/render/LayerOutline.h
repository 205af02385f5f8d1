#pragma once

#include <QPainterPath>
#include <QTransform>

#include "host/SketchJson.h"
#include "host/render/LayerStyle.h"

namespace kelvar::render {

/// From a layer's own coordinates to those around it: rotation about the middle, then flips, then
/// the frame's origin.
QTransform layerTransform(const SketchJson& layer);

/// The outline of a shape or of a shape group, whose parts are combined as each part's
/// "booleanOperation" says, in the layer's own coordinates. Empty for other kinds.
QPainterPath layerOutline(const SketchJson& layer);

/// Whether the outline is one that a border runs along both sides of: an open path.
bool isOpenOutline(const QPainterPath& outline);

/// The area that a pen of this width covers along the outline, with the style's dashes, caps and
/// joins. `detail` is by how much it will be enlarged.
QPainterPath strokeArea(const QPainterPath& outline, const LayerStyle& style, double width,
                        double detail);

/// The arrow heads, circles and squares at the ends of an open outline.
QPainterPath markerArea(const QPainterPath& outline, const LayerStyle& style, double width);

}  // namespace kelvar::render
