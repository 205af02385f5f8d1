#include "host/render/Surface.h"

#include "platform/ImageFile.h"

namespace kelvar::render {
namespace {

/// Modes that the painter does not know are mixed pixel by pixel.
void composeByPixel(const Surface& above, const Canvas& canvas, BlendMode mode, double opacity) {
  Surface cutAbove = Surface::of(above.rect().intersected(canvas.surface->rect()));
  if (cutAbove.isEmpty()) return;
  compose(above, {&cutAbove, {}, canvas.clips}, BlendMode::Normal, opacity);
  const QPoint at = cutAbove.origin - canvas.surface->origin;
  QImage below = canvas.surface->pixels.copy(QRect(at, cutAbove.pixels.size()));
  mix(cutAbove.pixels, &below, mode);
  QPainter painter(&canvas.surface->pixels);
  painter.setCompositionMode(QPainter::CompositionMode_Source);
  painter.drawImage(at, below);
}

}  // namespace

Surface Surface::of(const QRect& rect) {
  if (!isHoldable(rect.width(), rect.height())) return {};
  Surface surface{QImage(rect.size(), QImage::Format_ARGB32_Premultiplied), rect.topLeft()};
  surface.pixels.fill(Qt::transparent);
  return surface;
}

QRect touchedPixels(const QRectF& area, int margin, const QRect& limits) {
  // Numbers that no QRect holds are cut off before they become one.
  const QRectF touched = area.adjusted(-margin, -margin, margin, margin) & QRectF(limits);
  return touched.toAlignedRect() & limits;
}

void begin(QPainter* painter, const Canvas& canvas) {
  painter->begin(&canvas.surface->pixels);
  painter->setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
  painter->setPen(Qt::NoPen);
  const QPoint origin = canvas.surface->origin;
  const QTransform toSurface = QTransform::fromTranslate(-origin.x(), -origin.y());
  painter->setWorldTransform(toSurface);
  for (const QPainterPath& clip : canvas.clips) cut(painter, clip);
  painter->setWorldTransform(canvas.toPicture * toSurface);
}

void cut(QPainter* painter, const QPainterPath& outline) {
  QPainterPath path = outline;
  const QPointF inside = outline.boundingRect().center();
  path.addPolygon(QPolygonF({inside, inside + QPointF(1e-4, 0), inside}));
  painter->setClipPath(path, Qt::IntersectClip);
}

void compose(const Surface& above, const Canvas& canvas, BlendMode mode, double opacity) {
  if (above.isEmpty() || canvas.surface->isEmpty()) return;
  const auto composition = compositionOf(mode);
  if (!composition) return composeByPixel(above, canvas, mode, opacity);
  QPainter painter;
  begin(&painter, canvas);
  painter.setWorldTransform({});
  painter.setCompositionMode(*composition);
  painter.setOpacity(opacity);
  painter.drawImage(above.origin - canvas.surface->origin, above.pixels);
}

}  // namespace kelvar::render
