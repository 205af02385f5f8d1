#pragma once

#include "sketch/render/displaylist/DisplayItem.h"
#include "sketch/render/paint/PaintContext.h"

namespace kelvar::render {

/// A layer that is being painted, and a canvas in its own coordinates.
struct LayerContext {
  DisplayItem* item;
  PaintContext canvas;

  const LayerProperties& layer() const { return item->properties(); }
  const LayerStyle& style() const { return item->style(); }
  /// The rectangle to which gradients, images and blurs refer.
  QRectF box() const { return layer().box(); }
};

}  // namespace kelvar::render
