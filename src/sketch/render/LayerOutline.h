#pragma once

#include <QPainterPath>
#include <QStringList>
#include <stop_token>

#include "sketch/document/Layer.h"

namespace kelvar::render {

/// The outline of a shape or of a shape group, whose parts are combined as each part's
/// "booleanOperation" says, in the layer's own coordinates. Parts that cross too often to be
/// combined are only appended to each other, with a line in `*warnings`. Empty for other kinds.
/// Incomplete once a stop is requested.
QPainterPath layerOutline(const Layer& layer, QStringList* warnings,
                          const std::stop_token& stop = {});

/// Whether a part of the outline is open, so that its border runs along both sides.
bool isOpenOutline(const QPainterPath& outline);

/// The area that a pen of this width covers along the outline, with the style's dashes, caps and
/// joins. `detail` is the number of pixels per unit.
QPainterPath strokeArea(const QPainterPath& outline, const LayerStyle& style, double width,
                        double detail);

/// The arrow heads, circles and squares at the ends of an open outline.
QPainterPath markerArea(const QPainterPath& outline, const LayerStyle& style, double width);

}  // namespace kelvar::render
