#include "panel/Loupe.h"

#include <QPainterPath>

namespace kelvar::cli {
namespace {

/// Points between the point and the rim.
constexpr double kDistance = 28;

/// Above and to the right of the point, or on the other side if there is no space.
QPointF centerFor(const QPointF& at, const QRectF& view) {
  const double reach = kDistance + Loupe::kRadius;
  const double rim = Loupe::kRadius + 4;
  const double x = at.x() + reach + rim <= view.right() ? at.x() + reach : at.x() - reach;
  const double y = at.y() - reach - rim >= view.top() ? at.y() - reach : at.y() + reach;
  return {x, y};
}

}  // namespace

void Loupe::paint(QPainter* painter, const QPointF& at, const QRectF& view,
                  const QColor& accent) const {
  const QPointF center = centerFor(at, view);
  QPainterPath circle;
  circle.addEllipse(center, kRadius, kRadius);
  painter->save();
  painter->setRenderHint(QPainter::Antialiasing);
  painter->setClipPath(circle);
  painter->fillPath(circle, QColor(40, 40, 40));
  const QTransform zoomed = QTransform::fromTranslate(center.x(), center.y())
                                .scale(kZoom, kZoom)
                                .translate(-point.x(), -point.y());
  const double reach = kRadius / kZoom + 1;
  const QRect part = QRectF(point.x() - reach, point.y() - reach, 2 * reach, 2 * reach)
                         .toAlignedRect()
                         .intersected(image.rect());
  painter->setRenderHint(QPainter::SmoothPixmapTransform, false);
  painter->drawImage(zoomed.mapRect(QRectF(part)), image, QRectF(part));
  painter->setPen(QPen(QColor(0, 0, 0, 110), 3));
  painter->drawPolyline(zoomed.map(outline));
  painter->setPen(QPen(accent, 1.5));
  painter->drawPolyline(zoomed.map(outline));
  for (const QPen& pen : {QPen(QColor(0, 0, 0, 140), 3), QPen(Qt::white, 1)}) {
    painter->setPen(pen);
    painter->drawLine(center - QPointF(9, 0), center + QPointF(9, 0));
    painter->drawLine(center - QPointF(0, 9), center + QPointF(0, 9));
  }
  painter->setClipping(false);
  painter->setBrush(Qt::NoBrush);
  painter->setPen(QPen(QColor(0, 0, 0, 90), 4));
  painter->drawEllipse(center, kRadius, kRadius);
  painter->setPen(QPen(Qt::white, 2));
  painter->drawEllipse(center, kRadius, kRadius);
  painter->restore();
}

}  // namespace kelvar::cli
