#include "ui/DropShadowEffect.h"

#include <QPainter>

#include "platform/image/Canvas.h"

namespace kelvar {

DropShadowEffect::DropShadowEffect(ShadowRef shadow, QObject* parent)
    : QGraphicsEffect(parent), shadow_(std::move(shadow)) {}

QRectF DropShadowEffect::boundingRectFor(const QRectF& rect) const {
  if (!isVisible()) return rect;
  // Three standard deviations of the blur.
  const double reach = 1.5 * shadow_->blurRadius();
  const QSizeF offset = shadow_->offset();
  return rect |
         rect.translated(offset.width(), -offset.height()).adjusted(-reach, -reach, reach, reach);
}

void DropShadowEffect::draw(QPainter* painter) {
  if (!isVisible()) return drawSource(painter);
  QPoint corner;
  const QPixmap source = sourcePixmap(Qt::LogicalCoordinates, &corner, NoPad);
  const QRectF rect(corner, source.deviceIndependentSize());
  const QRectF outer = boundingRectFor(rect);
  Canvas canvas(outer.size(), source.devicePixelRatio());
  canvas.setShadow(shadow_->color(), shadow_->blurRadius(), shadow_->offset());
  canvas.drawImage(
      Image(source.toImage(), rect.size()),
      {rect.x() - outer.x(), outer.bottom() - rect.bottom(), rect.width(), rect.height()},
      Canvas::Operation::SourceOver);
  painter->drawImage(outer, canvas.pixels());
}

}  // namespace kelvar
