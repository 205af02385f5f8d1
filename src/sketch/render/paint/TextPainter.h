#pragma once

#include "sketch/render/paint/ShapePainter.h"

namespace kelvar::render {

/// Paints a text layer: color glyphs, then the outlines of all others with the layer's style, or in
/// their own colors if the style has no fills.
void paintText(const LayerContext& context, const TextLayout& text, DisplayList* list,
               ShapePainter* shapes, bool usesDisplayP3);

}  // namespace kelvar::render
