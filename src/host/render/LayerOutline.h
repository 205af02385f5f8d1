#pragma once

#include <QPainterPath>
#include <QStringList>
#include <stop_token>

#include "host/SketchJson.h"
#include "host/render/LayerStyle.h"

namespace kelvar::render {

/// The outline of a shape or of a shape group, whose parts are combined as each part's
/// "booleanOperation" says, in the layer's own coordinates. Parts that cross too often to be
/// combined stay side by side, with a line in `*warnings`. Empty for other kinds. Only a part of it
/// once it is to stop.
QPainterPath layerOutline(const SketchJson& layer, QStringList* warnings,
                          const std::stop_token& stop = {});

/// Whether the outline is one that a border runs along both sides of: an open path.
bool isOpenOutline(const QPainterPath& outline);

/// The area that a pen of this width covers along the outline, with the style's dashes, caps and
/// joins. `detail` is by how much it will be enlarged.
QPainterPath strokeArea(const QPainterPath& outline, const LayerStyle& style, double width,
                        double detail);

/// The arrow heads, circles and squares at the ends of an open outline.
QPainterPath markerArea(const QPainterPath& outline, const LayerStyle& style, double width);

}  // namespace kelvar::render
