#include "sketch/render/paint/compose.h"

#include "platform/image/PixelViews.h"

namespace kelvar::render {
namespace {

/// Modes that the painter does not know are mixed pixel by pixel.
void composeByPixel(const BitmapTile& above, const PaintContext& below, BlendMode mode,
                    double opacity) {
  const BitmapTile& tile = below.tile();
  BitmapTile cutAbove = BitmapTile::of(above.rect().intersected(tile.rect()));
  if (cutAbove.isEmpty()) return;
  compose(above, {&cutAbove, {}, below.clips()}, BlendMode::Normal, opacity);
  const QPoint at = cutAbove.origin - tile.origin;
  QImage mixed = tile.pixels.copy(QRect(at, cutAbove.pixels.size()));
  blend(viewOf(cutAbove.pixels), viewOf(&mixed), mode);
  ScopedPainter painter(below.clippedOnly({}));
  painter->setWorldTransform({});
  painter->setCompositionMode(QPainter::CompositionMode_Source);
  painter->drawImage(at, mixed);
}

}  // namespace

void compose(const BitmapTile& above, const PaintContext& below, BlendMode mode, double opacity) {
  const BitmapTile& tile = below.tile();
  if (above.isEmpty() || tile.isEmpty()) return;
  const auto composition = compositionOf(mode);
  if (!composition) return composeByPixel(above, below, mode, opacity);
  ScopedPainter painter(below);
  painter->setWorldTransform({});
  painter->setCompositionMode(*composition);
  painter->setOpacity(opacity);
  painter->drawImage(above.origin - tile.origin, above.pixels);
}

}  // namespace kelvar::render
