#pragma once

#include <QPainterPath>
#include <QPen>
#include <functional>
#include <stop_token>

#include "sketch/document/LayerStyle.h"
#include "sketch/render/paint/PaintContext.h"

namespace kelvar::render {

/// The shape that casts a shadow, in the image's pixels.
struct ShadowSource {
  QRectF bounds;
  /// Draws the shape onto a tile, grown by `spread` pixels; only the alpha matters.
  std::function<void(BitmapTile*, double spread)> draw;
  /// Whether the shape is partly transparent. Its shadow is then erased behind it.
  bool isTranslucent = false;
};

/// The pen that grows or shrinks an outline by `spread` on every side.
QPen spreadPen(double spread);

/// Draws the shadow of `source`. Shadows keep their direction when a layer is rotated; `scale` is
/// the number of pixels per unit of the layer.
void paintShadow(const ShadowSource& source, const Shadow& shadow, double scale,
                 const PaintContext& canvas, const std::stop_token& stop);

/// Draws the shadow that the edge of `outline`, which is in the image's pixels, casts onto the area
/// inside it.
void paintInnerShadow(const QPainterPath& outline, const Shadow& shadow, double scale,
                      const PaintContext& canvas, const std::stop_token& stop);

}  // namespace kelvar::render
