#include "app/panel/Loupe.h"

#include <QPainterPath>

namespace kelvar::app {
namespace {

constexpr double kAway = 28;

/// Above and right of the point, or on the other side where there is no room.
QPointF middle(const QPointF& at, const QRectF& view) {
  const double reach = kAway + Loupe::kRadius;
  const double rim = Loupe::kRadius + 4;
  const double x = at.x() + reach + rim <= view.right() ? at.x() + reach : at.x() - reach;
  const double y = at.y() - reach - rim >= view.top() ? at.y() - reach : at.y() + reach;
  return {x, y};
}

}  // namespace

void Loupe::paint(QPainter* painter, const QPointF& at, const QRectF& view,
                  const QColor& accent) const {
  const QPointF centre = middle(at, view);
  QPainterPath circle;
  circle.addEllipse(centre, kRadius, kRadius);
  painter->save();
  painter->setRenderHint(QPainter::Antialiasing);
  painter->setClipPath(circle);
  painter->fillPath(circle, QColor(40, 40, 40));
  const QTransform zoomed = QTransform::fromTranslate(centre.x(), centre.y())
                                .scale(kZoom, kZoom)
                                .translate(-point.x(), -point.y());
  const double reach = kRadius / kZoom + 1;
  const QRect part = QRectF(point.x() - reach, point.y() - reach, 2 * reach, 2 * reach)
                         .toAlignedRect()
                         .intersected(picture.rect());
  painter->setRenderHint(QPainter::SmoothPixmapTransform, false);
  painter->drawImage(zoomed.mapRect(QRectF(part)), picture, QRectF(part));
  painter->setPen(QPen(QColor(0, 0, 0, 110), 3));
  painter->drawPolyline(zoomed.map(outline));
  painter->setPen(QPen(accent, 1.5));
  painter->drawPolyline(zoomed.map(outline));
  for (const QPen& pen : {QPen(QColor(0, 0, 0, 140), 3), QPen(Qt::white, 1)}) {
    painter->setPen(pen);
    painter->drawLine(centre - QPointF(9, 0), centre + QPointF(9, 0));
    painter->drawLine(centre - QPointF(0, 9), centre + QPointF(0, 9));
  }
  painter->setClipping(false);
  painter->setBrush(Qt::NoBrush);
  painter->setPen(QPen(QColor(0, 0, 0, 90), 4));
  painter->drawEllipse(centre, kRadius, kRadius);
  painter->setPen(QPen(Qt::white, 2));
  painter->drawEllipse(centre, kRadius, kRadius);
  painter->restore();
}

}  // namespace kelvar::app
