#include "host/render/ShadowPainter.h"

#include <algorithm>
#include <cmath>

#include "host/render/GaussianBlur.h"
#include "host/render/paintInBands.h"

namespace kelvar::render {
namespace {

/// More blur than this cannot be told from it, and takes memory.
constexpr double kMostDeviation = 500;
/// Pixels. What is farther away or wider is not on any canvas, or is all of it.
constexpr double kFarthest = 1e8;

double deviationOf(const Shadow& shadow, double scale) {
  return std::min(shadow.blurRadius / 2 * scale, kMostDeviation);
}

QRect grown(const QRect& rect, int margin) {
  return rect.adjusted(-margin, -margin, margin, margin);
}

/// Blurs the alpha, and puts one colour in place of all.
void makeShadow(QImage* pixels, double deviation, const QColor& color,
                const std::stop_token& stop) {
  pixels->convertTo(QImage::Format_Alpha8);
  blur(pixels, deviation, stop);
  pixels->convertTo(QImage::Format_ARGB32_Premultiplied);
  QPainter painter(pixels);
  painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
  painter.fillRect(pixels->rect(), color);
}

void erase(const Surface& hole, Surface* from) {
  QPainter painter(&from->pixels);
  painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
  painter.drawImage(hole.origin - from->origin, hole.pixels);
}

/// A whole offset moves the surface; the rest is a shift within a pixel.
void move(Surface* surface, const QPointF& offset) {
  const QPoint whole(int(std::floor(offset.x())), int(std::floor(offset.y())));
  surface->origin += whole;
  const QPointF rest = offset - whole;
  if (rest.manhattanLength() < 1e-3) return;
  QImage moved(surface->pixels.size() + QSize(1, 1), QImage::Format_ARGB32_Premultiplied);
  moved.fill(Qt::transparent);
  QPainter painter(&moved);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.drawImage(rest, surface->pixels);
  painter.end();
  surface->pixels = moved;
}

}  // namespace

QPen spreadPen(double spread) {
  return {Qt::black, 2 * std::abs(spread), Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin};
}

double shadowMargin(const Shadow& shadow) {
  return std::max(0.0, shadow.blurRadius + shadow.spread);
}

void paintShadow(const Caster& caster, const Shadow& shadow, double scale, const Canvas& canvas,
                 const std::stop_token& stop) {
  if (shadow.color.alpha() == 0) return;
  const double deviation = deviationOf(shadow, scale), spread = shadow.spread * scale;
  const int reach = blurReach(deviation) + 1;
  const QPointF offset = shadow.offset * scale;
  if (!(offset.manhattanLength() < kFarthest)) return;
  const int wide = reach + int(std::ceil(std::clamp(spread, 0.0, kFarthest)));
  // Only what can still darken the canvas is drawn.
  const QRect needed =
      grown(QRectF(canvas.surface->rect()).translated(-offset).toAlignedRect(), reach);
  Surface cast = Surface::of(touchedPixels(caster.bounds, wide, needed));
  if (cast.isEmpty()) return;
  caster.draw(&cast, spread);
  makeShadow(&cast.pixels, deviation, shadow.color, stop);
  move(&cast, offset);
  if (caster.isTranslucent) {
    Surface hole = Surface::of(cast.rect());
    if (hole.isEmpty()) return;
    caster.draw(&hole, 0);
    erase(hole, &cast);
  }
  compose(cast, canvas, shadow.blendMode, 1);
}

void paintInnerShadow(const QPainterPath& outline, const Shadow& shadow, double scale,
                      const Canvas& canvas, const std::stop_token& stop) {
  if (shadow.color.alpha() == 0) return;
  const double deviation = deviationOf(shadow, scale), spread = shadow.spread * scale;
  const QRect inside = touchedPixels(outline.boundingRect(), 1, canvas.surface->rect());
  if (inside.isEmpty()) return;
  Surface rim = Surface::of(grown(inside, blurReach(deviation) + 1));
  if (rim.isEmpty()) return;
  rim.pixels.fill(Qt::black);
  const QPointF offset = shadow.offset * scale;
  const QTransform moved = QTransform::fromTranslate(offset.x(), offset.y());
  paintInBands({&rim, moved, {}}, outline, stop, [&](const Canvas& part) {
    QPainter painter;
    begin(&painter, part);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
    painter.fillPath(outline, Qt::black);
    if (spread > 0) painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    if (spread != 0) painter.strokePath(outline, spreadPen(spread));
  });
  makeShadow(&rim.pixels, deviation, shadow.color, stop);
  Surface visible = Surface::of(inside);
  paintInBands({&visible, {}, {}}, outline, stop, [&](const Canvas& part) {
    QPainter painter;
    begin(&painter, part);
    painter.fillPath(outline, Qt::black);
  });
  QPainter painter(&visible.pixels);
  painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
  painter.drawImage(rim.origin - visible.origin, rim.pixels);
  painter.end();
  compose(visible, canvas, shadow.blendMode, 1);
}

}  // namespace kelvar::render
