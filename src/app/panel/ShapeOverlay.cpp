#include "app/panel/ShapeOverlay.h"

#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "host/cornersObjection.h"

namespace kelvar::app {
namespace {

const QColor kWrong(226, 60, 54);
constexpr double kBelow = 26;
const QColor kHalo(0, 0, 0, 110);

double distance(const QPointF& a, const QPointF& b) {
  return std::hypot(a.x() - b.x(), a.y() - b.y());
}

double distanceToLine(const QPointF& p, const QPointF& a, const QPointF& b) {
  const QPointF along = b - a;
  const double length = QPointF::dotProduct(along, along);
  if (length == 0) return distance(p, a);
  const double t = std::clamp(QPointF::dotProduct(p - a, along) / length, 0.0, 1.0);
  return distance(p, a + along * t);
}

bool isOnOutline(const QPolygonF& outline, const QPointF& point, double reach) {
  for (qsizetype i = 0; i < outline.size(); ++i) {
    if (distanceToLine(point, outline[i], outline[(i + 1) % outline.size()]) <= reach) return true;
  }
  return false;
}

void strokeWithHalo(QPainter* painter, const QPainterPath& path, const QPen& pen) {
  painter->strokePath(path, QPen(kHalo, pen.widthF() + 2));
  painter->strokePath(path, pen);
}

QPainterPath closed(const QPolygonF& outline) {
  QPainterPath path;
  path.addPolygon(outline);
  path.closeSubpath();
  return path;
}

}  // namespace

QPolygonF ShapeOverlay::outline(const Arrangement::Shape& shape) const {
  QPolygonF outline;
  for (const QPointF& corner : shape.corners) outline.append(viewport.toView(corner));
  return outline;
}

void ShapeOverlay::paint(QPainter* painter) const {
  painter->setRenderHint(QPainter::Antialiasing);
  for (const Arrangement::Shape& shape : model.arrangement().shapesInSight()) {
    if (!model.isSelected(shape.id)) paintShape(painter, shape);
  }
  for (const QString& id : model.selection()) paintShape(painter, *model.arrangement().shape(id));
  paintProblems(painter);
}

QString ShapeOverlay::problemOf(const Arrangement::Shape& shape) const {
  const QString objection = cornersObjection(shape.corners, {});
  return objection.isEmpty() ? problems.value(shape.id) : objection;
}

/// One label a line of the view: the panel lists them all.
void ShapeOverlay::paintProblems(QPainter* painter) const {
  QList<double> taken;
  for (const Arrangement::Shape& shape : model.arrangement().shapesInSight()) {
    const QString problem = problemOf(shape);
    if (problem.isEmpty()) continue;
    const QRectF bounds = outline(shape).boundingRect();
    const QPointF below(bounds.center().x(), bounds.bottom() + kBelow);
    const bool isTaken = std::any_of(taken.begin(), taken.end(), [&](double y) {
      return std::abs(y - below.y()) < 1.2 * kBelow;
    });
    if (isTaken) continue;
    taken.append(below.y());
    paintLabel(painter, shape.name + QStringLiteral(": ") + problem, below, painter->viewport(),
               kWrong);
  }
}

void ShapeOverlay::paintShape(QPainter* painter, const Arrangement::Shape& shape) const {
  const bool isSelected = model.isSelected(shape.id);
  const QColor color = !problemOf(shape).isEmpty() ? kWrong
                       : isSelected                ? accent
                                                   : QColor(255, 255, 255);
  QPen pen(color, isSelected ? 2 : 1.25);
  if (!shape.included) pen.setDashPattern({4, 3});
  const QPolygonF corners = outline(shape);
  if (shape.design.isEmpty()) {
    QColor veil = color;
    veil.setAlpha(isSelected ? 46 : 26);
    painter->fillPath(closed(corners), veil);
  }
  strokeWithHalo(painter, closed(corners), pen);
  if (isSelected) paintHandles(painter, corners, qsizetype(shape.topLeftCorner()), color);
}

void ShapeOverlay::paintHandles(QPainter* painter, const QPolygonF& outline, qsizetype topLeft,
                                const QColor& color) const {
  for (qsizetype i = 0; i < outline.size(); ++i) {
    if (i != topLeft && !canChange) continue;
    painter->setPen(QPen(kHalo, 1));
    painter->setBrush(Qt::white);
    painter->drawEllipse(outline[i], kHandleRadius + 1, kHandleRadius + 1);
    painter->setPen(Qt::NoPen);
    painter->setBrush(color);
    painter->drawEllipse(outline[i], kHandleRadius - 1, kHandleRadius - 1);
    if (i == topLeft) continue;
    painter->setBrush(Qt::white);
    painter->drawEllipse(outline[i], kHandleRadius - 2.5, kHandleRadius - 2.5);
  }
}

void ShapeOverlay::paintBegun(QPainter* painter, const QList<QPointF>& corners,
                              const QPointF& next) const {
  painter->setRenderHint(QPainter::Antialiasing);
  QPolygonF placed;
  for (const QPointF& corner : corners) placed.append(viewport.toView(corner));
  QPainterPath path;
  path.addPolygon(placed);
  if (!placed.isEmpty()) path.lineTo(viewport.toView(next));
  if (placed.size() == 3) path.closeSubpath();
  strokeWithHalo(painter, path, QPen(accent, 2));
  paintHandles(painter, placed, 0, accent);
}

void ShapeOverlay::paintLabel(QPainter* painter, const QString& text, const QPointF& at,
                              const QRectF& view, const QColor& ground) {
  constexpr double kPadding = 10, kHeight = 28, kEdge = 12;
  const QFontMetricsF metrics(painter->font());
  const double most = view.width() - 2 * (kEdge + kPadding);
  const QString shown = metrics.elidedText(text, Qt::ElideRight, most);
  QRectF box(0, 0, metrics.horizontalAdvance(shown) + 2 * kPadding, kHeight);
  box.moveCenter(at);
  box.moveLeft(std::clamp(box.left(), view.left() + kEdge,
                          std::max(view.right() - kEdge - box.width(), view.left() + kEdge)));
  box.moveTop(std::clamp(box.top(), view.top() + kEdge,
                         std::max(view.bottom() - kEdge - kHeight, view.top() + kEdge)));
  painter->setPen(Qt::NoPen);
  painter->setBrush(ground);
  painter->drawRoundedRect(box, kHeight / 2, kHeight / 2);
  painter->setPen(Qt::white);
  painter->drawText(box, Qt::AlignCenter, shown);
}

QString ShapeOverlay::shapeAt(const QPointF& point) const {
  const QList<Arrangement::Shape> shapes = model.arrangement().shapesInSight();
  for (auto shape = shapes.rbegin(); shape != shapes.rend(); ++shape) {
    const QPolygonF corners = outline(*shape);
    if (corners.containsPoint(point, Qt::WindingFill) || isOnOutline(corners, point, kReach / 2)) {
      return shape->id;
    }
  }
  return {};
}

ShapeOverlay::Corner ShapeOverlay::cornerAt(const QPointF& point) const {
  Corner nearest;
  double reach = kReach;
  for (const QString& id : model.selection()) {
    const QPolygonF corners = outline(*model.arrangement().shape(id));
    for (int i = 0; i < 4; ++i) {
      const double away = distance(corners[i], point);
      if (away > reach) continue;
      reach = away;
      nearest = {id, i};
    }
  }
  return nearest;
}

}  // namespace kelvar::app
