#pragma once

#include <stop_token>

#include "sketch/render/paint/LayerContext.h"

namespace kelvar::render {

/// The margin, in pixels, by which all of a layer's own blurs together may spread its content.
/// `scale` is the number of pixels per unit of the layer.
int ownBlurMargin(const LayerStyle& style, double scale);

/// Applies a layer's own blurs, one after the other, to a tile that the layer was drawn onto. The
/// result is valid only within `needed`, which is in the image's pixels.
void blurLayer(const LayerContext& context, const QRect& needed, BitmapTile* tile,
               const std::stop_token& stop);

/// Blurs everything below a layer within `outline`, which is in the image's pixels.
void blurBackground(const LayerContext& context, const Blur& blur, const QPainterPath& outline,
                    const std::stop_token& stop);

}  // namespace kelvar::render
