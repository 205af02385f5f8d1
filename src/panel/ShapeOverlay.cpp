#include "panel/ShapeOverlay.h"

#include <QPainterPath>
#include <algorithm>
#include <cmath>

#include "panel/ShapeHitTest.h"
#include "platform/QtError.h"
#include "scene/validateQuad.h"

namespace kelvar::cli {
namespace {

const QColor kErrorColor(226, 60, 54);
/// Points from a shape to its label.
constexpr double kLabelDistance = 26;
const QColor kHalo(0, 0, 0, 110);

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

void ShapeOverlay::paint(QPainter* painter) const {
  painter->setRenderHint(QPainter::Antialiasing);
  for (const Arrangement::Shape& shape : model.arrangement().shapesOnArtboard()) {
    if (!model.isSelected(shape.id)) paintShape(painter, shape);
  }
  for (const QString& id : model.selection()) paintShape(painter, *model.arrangement().shape(id));
  paintProblems(painter);
}

Result<void> ShapeOverlay::check(const Arrangement::Shape& shape) const {
  const Result<void> valid = validateQuad(quadFrom(shape.corners));
  if (!valid || !problems.contains(shape.id)) return valid;
  return failure(Error::Kind::Unsupported, problems.value(shape.id));
}

/// At most one label per line of the view: the inspector lists them all.
void ShapeOverlay::paintProblems(QPainter* painter) const {
  QList<double> taken;
  for (const Arrangement::Shape& shape : model.arrangement().shapesOnArtboard()) {
    const Result<void> checked = check(shape);
    if (checked) continue;
    const QRectF bounds = outlineInView(shape, viewport).boundingRect();
    const QPointF below(bounds.center().x(), bounds.bottom() + kLabelDistance);
    const bool isTaken = std::any_of(taken.begin(), taken.end(), [&](double y) {
      return std::abs(y - below.y()) < 1.2 * kLabelDistance;
    });
    if (isTaken) continue;
    taken.append(below.y());
    paintLabel(painter, shape.name + QStringLiteral(": ") + messageOf(checked.error()), below,
               painter->viewport(), kErrorColor);
  }
}

void ShapeOverlay::paintShape(QPainter* painter, const Arrangement::Shape& shape) const {
  const bool isSelected = model.isSelected(shape.id);
  const QColor color = !check(shape) ? kErrorColor : isSelected ? accent : QColor(255, 255, 255);
  QPen pen(color, isSelected ? 2 : 1.25);
  if (!shape.options.includedInArtboards) pen.setDashPattern({4, 3});
  const QPolygonF corners = outlineInView(shape, viewport);
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

void ShapeOverlay::paintUnfinished(QPainter* painter, const QList<QPointF>& corners,
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
                              const QRectF& view, const QColor& background) {
  constexpr double kPadding = 10, kHeight = 28, kEdge = 12;
  const QFontMetricsF metrics(painter->font());
  const double maxWidth = view.width() - 2 * (kEdge + kPadding);
  const QString shown = metrics.elidedText(text, Qt::ElideRight, maxWidth);
  QRectF box(0, 0, metrics.horizontalAdvance(shown) + 2 * kPadding, kHeight);
  box.moveCenter(at);
  box.moveLeft(std::clamp(box.left(), view.left() + kEdge,
                          std::max(view.right() - kEdge - box.width(), view.left() + kEdge)));
  box.moveTop(std::clamp(box.top(), view.top() + kEdge,
                         std::max(view.bottom() - kEdge - kHeight, view.top() + kEdge)));
  painter->setPen(Qt::NoPen);
  painter->setBrush(background);
  painter->drawRoundedRect(box, kHeight / 2, kHeight / 2);
  painter->setPen(Qt::white);
  painter->drawText(box, Qt::AlignCenter, shown);
}

}  // namespace kelvar::cli
