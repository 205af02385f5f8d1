#include "sketch/render/LayerOutline.h"

#include <QPainterPathStroker>
#include <cmath>

#include "sketch/document/SketchPath.h"
#include "sketch/render/combinePaths.h"
#include "sketch/render/paint/canCombine.h"

namespace kelvar::render {
namespace {

QPainterPath painterPath(const BezierPath& path) {
  QPainterPath result;
  for (const BezierPath::Element& element : path.elements()) {
    const auto& p = element.points;
    switch (element.kind) {
      case BezierPath::Kind::Move:
        result.moveTo(p[0]);
        break;
      case BezierPath::Kind::Line:
        result.lineTo(p[0]);
        break;
      case BezierPath::Kind::Curve:
        result.cubicTo(p[0], p[1], p[2]);
        break;
      case BezierPath::Kind::Close:
        result.closeSubpath();
    }
  }
  return result;
}

BooleanOperation operationOf(const LayerProperties& part) {
  const int number = part.booleanOperation;
  return number >= 0 && number <= int(BooleanOperation::Difference) ? BooleanOperation(number)
                                                                    : BooleanOperation::None;
}

QPainterPath groupOutline(const Layer& group, Qt::FillRule rule, QStringList* warnings,
                          const std::stop_token& stop) {
  QPainterPath outline;
  outline.setFillRule(rule);
  bool isFirst = true;
  for (const auto& child : group.children()) {
    const LayerProperties& part = child->properties();
    if (stop.stop_requested()) break;
    if (!part.isVisible) continue;
    const QPainterPath path = part.transform.map(layerOutline(*child, warnings, stop));
    if (path.isEmpty()) continue;
    BooleanOperation operation = isFirst ? BooleanOperation::None : operationOf(part);
    if (operation != BooleanOperation::None && !canCombine(outline, path)) {
      operation = BooleanOperation::None;
      warnings->append(
          QStringLiteral(
              "The shapes of \"%1\" cross too often to be combined; they are drawn as they are.")
              .arg(group.properties().name));
    }
    outline = combinePaths(outline, path, operation);
    if (operation == BooleanOperation::None) outline.setFillRule(rule);
    isFirst = false;
  }
  return outline;
}

/// Where an open outline ends, and which way it goes there.
struct End {
  QPointF point;
  QPointF direction;
};

End endOf(const QPainterPath& path, bool atStart) {
  const auto point = [&](int i) {
    return QPointF(path.elementAt(atStart ? i : path.elementCount() - 1 - i));
  };
  for (int i = 1; i < path.elementCount(); ++i) {
    const QPointF way = point(0) - point(i);
    const double length = std::hypot(way.x(), way.y());
    if (length > 1e-9) return {point(0), way / length};
  }
  return {point(0), {1, 0}};
}

QPainterPath outlined(const QPainterPath& path, double width, Qt::PenJoinStyle join) {
  QPainterPathStroker stroker;
  stroker.setWidth(width);
  stroker.setJoinStyle(join);
  return stroker.createStroke(path);
}

/// At the origin, pointing along x. The arrow's size is that of stored previews.
QPainterPath markerShape(Marker marker, double width) {
  const double size = 3 * width, arrowLength = 10.8 * width;
  QPainterPath path;
  path.setFillRule(Qt::WindingFill);
  switch (marker) {
    case Marker::None:
      return path;
    case Marker::OpenArrow:
    case Marker::FilledArrow:
      path.moveTo(-arrowLength, -size);
      path.lineTo(0, 0);
      path.lineTo(-arrowLength, size);
      if (marker == Marker::OpenArrow) return outlined(path, width, Qt::BevelJoin);
      path.closeSubpath();
      path.addPath(outlined(path, width, Qt::BevelJoin));
      return path;
    case Marker::Line:
      path.addRect(-width / 2, -size, width, 2 * size);
      return path;
    case Marker::OpenCircle:
    case Marker::FilledCircle:
      path.addEllipse(QPointF(0, 0), size, size);
      return marker == Marker::OpenCircle ? outlined(path, width, Qt::MiterJoin) : path;
    case Marker::OpenSquare:
    case Marker::FilledSquare:
      path.addRect(-size, -size, 2 * size, 2 * size);
      return marker == Marker::OpenSquare ? outlined(path, width, Qt::MiterJoin) : path;
  }
  return path;
}

}  // namespace

QPainterPath layerOutline(const Layer& layer, QStringList* warnings, const std::stop_token& stop) {
  const Qt::FillRule rule = layer.style().evenOdd ? Qt::OddEvenFill : Qt::WindingFill;
  const LayerProperties& properties = layer.properties();
  if (properties.kind == LayerKind::ShapeGroup) return groupOutline(layer, rule, warnings, stop);
  QPainterPath outline = painterPath(sketchPath(layer.json(), properties.frame.size()));
  outline.setFillRule(rule);
  return outline;
}

bool isOpenOutline(const QPainterPath& outline) {
  if (outline.elementCount() < 2) return true;
  QPointF start = outline.elementAt(0);
  for (int i = 1; i < outline.elementCount(); ++i) {
    const QPainterPath::Element element = outline.elementAt(i);
    if (!element.isMoveTo()) continue;
    if (QPointF(outline.elementAt(i - 1)) != start) return true;
    start = element;
  }
  return outline.currentPosition() != start;
}

QPainterPath strokeArea(const QPainterPath& outline, const LayerStyle& style, double width,
                        double detail) {
  QPainterPathStroker stroker;
  stroker.setWidth(width);
  stroker.setCapStyle(style.cap);
  stroker.setJoinStyle(style.join);
  stroker.setMiterLimit(style.miterLimit);
  stroker.setCurveThreshold(0.1 / std::max(1.0, detail));
  if (!style.dashes.isEmpty()) {
    QList<qreal> dashes;  // In widths, and an even number of them.
    for (int repeat = 0; repeat <= style.dashes.size() % 2; ++repeat) {
      for (const double dash : style.dashes) dashes.append(std::max(1e-3, dash / width));
    }
    stroker.setDashPattern(dashes);
  }
  QPainterPath area = stroker.createStroke(outline);
  area.setFillRule(Qt::WindingFill);
  return area;
}

QPainterPath markerArea(const QPainterPath& outline, const LayerStyle& style, double width) {
  QPainterPath area;
  area.setFillRule(Qt::WindingFill);
  if (!isOpenOutline(outline) || outline.elementCount() < 2) return area;
  for (const bool atStart : {true, false}) {
    const End end = endOf(outline, atStart);
    const QTransform toEnd(end.direction.x(), end.direction.y(), -end.direction.y(),
                           end.direction.x(), end.point.x(), end.point.y());
    area.addPath(toEnd.map(markerShape(atStart ? style.startMarker : style.endMarker, width)));
  }
  return area;
}

}  // namespace kelvar::render
