#include "panel/ShapeHitTest.h"

#include <algorithm>
#include <cmath>

namespace kelvar::cli {
namespace {

double distance(const QPointF& a, const QPointF& b) {
  return std::hypot(a.x() - b.x(), a.y() - b.y());
}

double distanceToSegment(const QPointF& p, const QPointF& a, const QPointF& b) {
  const QPointF along = b - a;
  const double length = QPointF::dotProduct(along, along);
  if (length == 0) return distance(p, a);
  const double t = std::clamp(QPointF::dotProduct(p - a, along) / length, 0.0, 1.0);
  return distance(p, a + along * t);
}

bool isOnOutline(const QPolygonF& outline, const QPointF& point, double reach) {
  for (qsizetype i = 0; i < outline.size(); ++i) {
    const QPointF& next = outline[(i + 1) % outline.size()];
    if (distanceToSegment(point, outline[i], next) <= reach) return true;
  }
  return false;
}

}  // namespace

QPolygonF outlineInView(const Arrangement::Shape& shape, const Viewport& viewport) {
  QPolygonF outline;
  for (const QPointF& corner : shape.corners) outline.append(viewport.toView(corner));
  return outline;
}

QString ShapeHitTest::shapeAt(const QPointF& point) const {
  const QList<Arrangement::Shape> shapes = model.arrangement().shapesOnArtboard();
  for (auto shape = shapes.rbegin(); shape != shapes.rend(); ++shape) {
    const QPolygonF outline = outlineInView(*shape, viewport);
    if (outline.containsPoint(point, Qt::WindingFill) || isOnOutline(outline, point, kReach / 2)) {
      return shape->id;
    }
  }
  return {};
}

ShapeHitTest::Corner ShapeHitTest::cornerAt(const QPointF& point) const {
  Corner nearest;
  double reach = kReach;
  for (const QString& id : model.selection()) {
    const QPolygonF outline = outlineInView(*model.arrangement().shape(id), viewport);
    for (int i = 0; i < 4; ++i) {
      const double away = distance(outline[i], point);
      if (away > reach) continue;
      reach = away;
      nearest = {id, i};
    }
  }
  return nearest;
}

}  // namespace kelvar::cli
