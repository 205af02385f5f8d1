#include "sketch/render/paint/ShadowPainter.h"

#include <algorithm>
#include <cmath>

#include "pixels/filter/GaussianBlur.h"
#include "platform/image/PixelViews.h"
#include "sketch/render/paint/compose.h"
#include "sketch/render/paint/paintInBands.h"

namespace kelvar::render {
namespace {

/// More blur than this cannot be told from it, and takes memory.
constexpr double kMaxDeviation = 500;
/// Pixels. What is farther away or wider is not on any canvas, or is all of it.
constexpr double kMaxCoordinate = 1e8;

double deviationOf(const Shadow& shadow, double scale) {
  return std::min(shadow.blurRadius / 2 * scale, kMaxDeviation);
}

QRect grown(const QRect& rect, int margin) {
  return rect.adjusted(-margin, -margin, margin, margin);
}

/// As blur(), but masks are halved by the painter, which weighs their pixels a little differently.
void blurMask(QImage* mask, double sigma, const std::stop_token& stop) {
  if (sigma <= kMaxExactBlurSigma) return blur(viewOf(mask), sigma, stop);
  const QSize size = mask->size(), half((size.width() + 1) / 2, (size.height() + 1) / 2);
  QImage smaller = mask->scaled(half, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  smaller.convertTo(mask->format());
  blurMask(&smaller, sigma / 2, stop);
  *mask = smaller.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  mask->convertTo(QImage::Format_Alpha8);
}

/// Blurs the alpha, and puts one color in place of all.
void makeShadow(QImage* pixels, double deviation, const QColor& color,
                const std::stop_token& stop) {
  pixels->convertTo(QImage::Format_Alpha8);
  blurMask(pixels, deviation, stop);
  pixels->convertTo(QImage::Format_ARGB32_Premultiplied);
  QPainter painter(pixels);
  painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
  painter.fillRect(pixels->rect(), color);
}

void erase(const BitmapTile& hole, BitmapTile* from) {
  QPainter painter(&from->pixels);
  painter.setCompositionMode(QPainter::CompositionMode_DestinationOut);
  painter.drawImage(hole.origin - from->origin, hole.pixels);
}

/// A whole offset moves the tile; the rest is a shift within a pixel.
void move(BitmapTile* tile, const QPointF& offset) {
  const QPoint whole(int(std::floor(offset.x())), int(std::floor(offset.y())));
  tile->origin += whole;
  const QPointF rest = offset - whole;
  if (rest.manhattanLength() < 1e-3) return;
  QImage moved(tile->pixels.size() + QSize(1, 1), QImage::Format_ARGB32_Premultiplied);
  moved.fill(Qt::transparent);
  QPainter painter(&moved);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.drawImage(rest, tile->pixels);
  painter.end();
  tile->pixels = moved;
}

}  // namespace

QPen spreadPen(double spread) {
  return {Qt::black, 2 * std::abs(spread), Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin};
}

void paintShadow(const ShadowSource& source, const Shadow& shadow, double scale,
                 const PaintContext& canvas, const std::stop_token& stop) {
  if (shadow.color.alpha() == 0) return;
  const double deviation = deviationOf(shadow, scale), spread = shadow.spread * scale;
  const int reach = blurReach(deviation) + 1;
  const QPointF offset = shadow.offset * scale;
  if (!(offset.manhattanLength() < kMaxCoordinate)) return;
  const int wide = reach + int(std::ceil(std::clamp(spread, 0.0, kMaxCoordinate)));
  // Only what can still darken the canvas is drawn.
  const QRect needed =
      grown(QRectF(canvas.tile().rect()).translated(-offset).toAlignedRect(), reach);
  BitmapTile cast = BitmapTile::of(touchedPixels(source.bounds, wide, needed));
  if (cast.isEmpty()) return;
  source.draw(&cast, spread);
  makeShadow(&cast.pixels, deviation, shadow.color, stop);
  move(&cast, offset);
  if (source.isTranslucent) {
    BitmapTile hole = BitmapTile::of(cast.rect());
    if (hole.isEmpty()) return;
    source.draw(&hole, 0);
    erase(hole, &cast);
  }
  compose(cast, canvas, shadow.blendMode, 1);
}

void paintInnerShadow(const QPainterPath& outline, const Shadow& shadow, double scale,
                      const PaintContext& canvas, const std::stop_token& stop) {
  if (shadow.color.alpha() == 0) return;
  const double deviation = deviationOf(shadow, scale), spread = shadow.spread * scale;
  const QRect inside = touchedPixels(outline.boundingRect(), 1, canvas.tile().rect());
  if (inside.isEmpty()) return;
  BitmapTile rim = BitmapTile::of(grown(inside, blurReach(deviation) + 1));
  if (rim.isEmpty()) return;
  rim.pixels.fill(Qt::black);
  const QPointF offset = shadow.offset * scale;
  const QTransform moved = QTransform::fromTranslate(offset.x(), offset.y());
  paintInBands({&rim, moved}, outline, stop, [&](const PaintContext& part) {
    ScopedPainter painter(part);
    painter->setCompositionMode(QPainter::CompositionMode_DestinationOut);
    painter->fillPath(outline, Qt::black);
    if (spread > 0) painter->setCompositionMode(QPainter::CompositionMode_SourceOver);
    if (spread != 0) painter->strokePath(outline, spreadPen(spread));
  });
  makeShadow(&rim.pixels, deviation, shadow.color, stop);
  BitmapTile visible = BitmapTile::of(inside);
  paintInBands({&visible, {}}, outline, stop, [&](const PaintContext& part) {
    ScopedPainter painter(part);
    painter->fillPath(outline, Qt::black);
  });
  QPainter painter(&visible.pixels);
  painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
  painter.drawImage(rim.origin - visible.origin, rim.pixels);
  painter.end();
  compose(visible, canvas, shadow.blendMode, 1);
}

}  // namespace kelvar::render
