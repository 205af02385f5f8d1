#include "sketch/render/paint/BitmapPainter.h"

#include "sketch/render/paint/ColorAdjustment.h"
#include "sketch/render/paint/FillPainter.h"
#include "sketch/render/paint/compose.h"

namespace kelvar::render {
namespace {

QPainterPath rectPath(const QRectF& rect) {
  QPainterPath path;
  path.addRect(rect);
  return path;
}

/// As large as it is drawn; null for none.
QImage pixelsOf(const LayerContext& context, DocumentImages* images) {
  const LayerProperties& layer = context.layer();
  if (layer.fillReplacesImage || context.item->leavesOutImages) return {};
  const ImageRef image = images->image(layer.image);
  if (!image || image->pixels().isNull()) return {};
  return applyColorControls(shrunkFor(image->pixels(), context.box(), context.canvas.toImage()),
                            context.style().colorControls);
}

/// What is shown of the image, in the layer's coordinates.
QRectF cropOf(const LayerProperties& layer) {
  const QRectF box = layer.box(), part = layer.crop;
  if (part.isEmpty()) return box;
  return {part.x() * box.width(), part.y() * box.height(), part.width() * box.width(),
          part.height() * box.height()};
}

void drawImage(const QImage& pixels, const LayerProperties& layer, const PaintContext& canvas) {
  if (pixels.isNull()) return;
  const QRectF crop = cropOf(layer);
  ScopedPainter painter(canvas);
  if (crop != layer.box()) cut(painter.get(), rectPath(crop));
  painter->drawImage(layer.box(), pixels);
}

/// The image under its fills, which tint what is opaque of it.
void drawTinted(const QImage& pixels, const LayerContext& context, ShapePainter* shapes) {
  const QTransform& toImage = context.canvas.toImage();
  const QRect limits = context.canvas.tile().rect();
  BitmapTile alone = BitmapTile::of(touchedPixels(toImage.mapRect(context.box()), 0, limits));
  if (alone.isEmpty()) return;
  drawImage(pixels, context.layer(), {&alone, toImage});
  shapes->tint({context.item, {&alone, toImage}}, &alone);
  compose(alone, context.canvas, BlendMode::Normal, 1);
}

}  // namespace

void paintBitmap(const LayerContext& context, DocumentImages* images, ShapePainter* shapes) {
  const LayerProperties& layer = context.layer();
  const QPainterPath outline = rectPath(context.box());
  const QImage pixels = pixelsOf(context, images);
  const bool isTinted = !pixels.isNull() && !context.style().fills.isEmpty();
  if (!context.style().shadows.isEmpty()) {
    using Body = ShapePainter::Body;
    ShadowSource source =
        shapes->shadowSourceOf(context, outline, isTinted ? Body() : Body::of(context.style()));
    const auto drawRest = source.draw;
    source.draw = [&, drawRest](BitmapTile* tile, double spread) {
      drawImage(pixels, layer, {tile, context.canvas.toImage()});
      drawRest(tile, spread);
    };
    shapes->paintShadows(context, source);
  }
  if (isTinted) {
    drawTinted(pixels, context, shapes);
  } else {
    drawImage(pixels, layer, context.canvas);
    shapes->paintFills(context, outline);
  }
  shapes->paintInnerShadows(context, outline);
  shapes->paintBorders(context, outline);
}

}  // namespace kelvar::render
