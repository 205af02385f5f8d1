#include "sketch/render/paint/BitmapTile.h"

#include "platform/image/ImageFile.h"

namespace kelvar::render {

BitmapTile BitmapTile::of(const QRect& rect) {
  if (!fitsImageLimits(rect.width(), rect.height())) return {};
  BitmapTile tile{QImage(rect.size(), QImage::Format_ARGB32_Premultiplied), rect.topLeft()};
  tile.pixels.fill(Qt::transparent);
  return tile;
}

QRect touchedPixels(const QRectF& area, int margin, const QRect& limits) {
  // Numbers that no QRect holds are cut off before they become one.
  const QRectF touched = area.adjusted(-margin, -margin, margin, margin) & QRectF(limits);
  return touched.toAlignedRect() & limits;
}

}  // namespace kelvar::render
