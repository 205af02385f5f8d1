#include "sketch/render/combinePaths.h"

#include <clipper.hpp>
#include <cmath>

namespace kelvar::render {
namespace {

/// Curves are cut into lines at this scale, and corners are rounded to the finer one.
constexpr double kDetail = 64, kPrecision = 16;

ClipperLib::Paths polygonsOf(const QPainterPath& path) {
  ClipperLib::Paths polygons;
  for (const QPolygonF& part : path.toSubpathPolygons(QTransform::fromScale(kDetail, kDetail))) {
    ClipperLib::Path polygon;
    polygon.reserve(size_t(part.size()));
    for (const QPointF& point : part) {
      polygon.emplace_back(std::llround(point.x() * kPrecision),
                           std::llround(point.y() * kPrecision));
    }
    polygons.push_back(std::move(polygon));
  }
  return polygons;
}

QPainterPath pathOf(const ClipperLib::Paths& polygons) {
  constexpr double kUnit = 1 / (kDetail * kPrecision);
  QPainterPath path;
  for (const ClipperLib::Path& polygon : polygons) {
    for (size_t i = 0; i < polygon.size(); ++i) {
      const QPointF point(double(polygon[i].X) * kUnit, double(polygon[i].Y) * kUnit);
      i == 0 ? path.moveTo(point) : path.lineTo(point);
    }
    path.closeSubpath();
  }
  return path;
}

ClipperLib::PolyFillType fillTypeOf(const QPainterPath& path) {
  return path.fillRule() == Qt::OddEvenFill ? ClipperLib::pftEvenOdd : ClipperLib::pftNonZero;
}

ClipperLib::ClipType clipTypeOf(BooleanOperation operation) {
  switch (operation) {
    case BooleanOperation::Subtract:
      return ClipperLib::ctDifference;
    case BooleanOperation::Intersect:
      return ClipperLib::ctIntersection;
    case BooleanOperation::Difference:
      return ClipperLib::ctXor;
    default:
      return ClipperLib::ctUnion;
  }
}

QPainterPath clipped(const QPainterPath& below, const QPainterPath& above,
                     BooleanOperation operation) {
  ClipperLib::Clipper clipper;
  clipper.AddPaths(polygonsOf(below), ClipperLib::ptSubject, true);
  clipper.AddPaths(polygonsOf(above), ClipperLib::ptClip, true);
  ClipperLib::Paths result;
  clipper.Execute(clipTypeOf(operation), result, fillTypeOf(below), fillTypeOf(above));
  return pathOf(result);
}

/// Whether both rules fill the same of a path: it has one part, which is unlikely to cross itself.
bool isSimple(const QPainterPath& path) {
  for (int i = 1; i < path.elementCount(); ++i) {
    if (path.elementAt(i).isMoveTo()) return false;
  }
  return true;
}

}  // namespace

QPainterPath combinePaths(const QPainterPath& below, const QPainterPath& above,
                          BooleanOperation operation) {
  const bool isApart = !below.boundingRect().intersects(above.boundingRect());
  const bool isEvenOdd = below.fillRule() == Qt::OddEvenFill || isSimple(below);
  const bool isOtherEvenOdd = above.fillRule() == Qt::OddEvenFill || isSimple(above);
  QPainterPath result = below;
  if (operation == BooleanOperation::None) {
    result.addPath(above);
    return result;
  }
  if (isApart && operation == BooleanOperation::Intersect) {
    result = {};
  } else if (isApart && isEvenOdd && operation == BooleanOperation::Subtract) {
    // Nothing is taken away.
  } else if (isApart && isEvenOdd && isOtherEvenOdd) {
    result.addPath(above);
  } else {
    result = clipped(below, above, operation);
  }
  result.setFillRule(Qt::OddEvenFill);
  return result;
}

}  // namespace kelvar::render
