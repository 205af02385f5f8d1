#include "host/render/LayerOutline.h"

#include <QPainterPathStroker>
#include <cmath>

#include "host/SketchPath.h"
#include "host/SketchTransform.h"
#include "host/render/canCombine.h"

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

enum class Operation { None = -1, Union = 0, Subtract = 1, Intersect = 2, Difference = 3 };

QPainterPath combined(QPainterPath below, const QPainterPath& above, int operation,
                      Qt::FillRule rule) {
  switch (Operation(operation)) {
    case Operation::Union:
      below = below.united(above);
      break;
    case Operation::Subtract:
      below = below.subtracted(above);
      break;
    case Operation::Intersect:
      below = below.intersected(above);
      break;
    case Operation::Difference:
      below = below.subtracted(above).united(above.subtracted(below));
      break;
    default:
      below.addPath(above);
  }
  below.setFillRule(rule);
  return below;
}

QPainterPath groupOutline(const SketchJson& group, Qt::FillRule rule, QStringList* warnings,
                          const std::stop_token& stop) {
  QPainterPath outline;
  outline.setFillRule(rule);
  bool isFirst = true;
  for (const SketchJson& part : listIn(group, "layers")) {
    if (stop.stop_requested()) break;
    if (!flagIn(part, "isVisible", true)) continue;
    const QPainterPath path = sketchTransform(part).map(layerOutline(part, warnings, stop));
    if (path.isEmpty()) continue;
    int operation = isFirst ? -1 : integerIn(part, "booleanOperation", -1);
    if (operation != -1 && !canCombine(outline, path)) {
      operation = -1;
      warnings->append(
          QStringLiteral("The shapes of \"%1\" cross too often to be combined; they are not.")
              .arg(textIn(group, "name")));
    }
    outline = combined(outline, path, operation, rule);
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

QPainterPath outlined(const QPainterPath& path, double width) {
  QPainterPathStroker stroker;
  stroker.setWidth(width);
  stroker.setJoinStyle(Qt::MiterJoin);
  return stroker.createStroke(path);
}

/// At the origin, pointing along x.
QPainterPath markerShape(Marker marker, double width) {
  const double size = 3 * width;
  QPainterPath path;
  path.setFillRule(Qt::WindingFill);
  switch (marker) {
    case Marker::None:
      return path;
    case Marker::OpenArrow:
      path.moveTo(-size, -size);
      path.lineTo(0, 0);
      path.lineTo(-size, size);
      return outlined(path, width);
    case Marker::FilledArrow:
      path.addPolygon(QPolygonF({{-size, -size}, {size / 2, 0}, {-size, size}, {-size, -size}}));
      return path;
    case Marker::Line:
      path.addRect(-width / 2, -size, width, 2 * size);
      return path;
    case Marker::OpenCircle:
    case Marker::FilledCircle:
      path.addEllipse(QPointF(0, 0), size, size);
      return marker == Marker::OpenCircle ? outlined(path, width) : path;
    case Marker::OpenSquare:
    case Marker::FilledSquare:
      path.addRect(-size, -size, 2 * size, 2 * size);
      return marker == Marker::OpenSquare ? outlined(path, width) : path;
  }
  return path;
}

}  // namespace

QPainterPath layerOutline(const SketchJson& layer, QStringList* warnings,
                          const std::stop_token& stop) {
  const Qt::FillRule rule = integerIn(memberOf(layer, "style"), "windingRule", 1) != 0
                                ? Qt::OddEvenFill
                                : Qt::WindingFill;
  if (classOf(layer) == u"shapeGroup") return groupOutline(layer, rule, warnings, stop);
  QPainterPath outline = painterPath(sketchPath(layer, rectIn(layer, "frame").size()));
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
