#pragma once

#include "sketch/render/paint/ShapePainter.h"

namespace kelvar::render {

/// Paints a bitmap layer: its image over its frame, and the layer's style along the frame.
void paintBitmap(const LayerContext& context, DocumentImages* images, ShapePainter* shapes);

}  // namespace kelvar::render
