#include "sketch/render/text/SyntheticBold.h"

#include <algorithm>
#include <cmath>

namespace kelvar::render {
namespace {

double doubledArea(const QPainterPath& path) {
  double area = 0;
  QPointF start, last;
  for (int i = 0; i < path.elementCount(); ++i) {
    const QPainterPath::Element element = path.elementAt(i);
    if (element.isMoveTo()) {
      area += last.x() * start.y() - start.x() * last.y();
      start = element;
    } else {
      area += last.x() * element.y - element.x * last.y();
    }
    last = element;
  }
  return area + last.x() * start.y() - start.x() * last.y();
}

/// The unit vector from a point of a contour to the next one, or the one before, that lies
/// elsewhere; null when there is none.
QPointF wayFrom(const QPainterPath& path, int begin, int end, int at, int step) {
  const QPointF point = path.elementAt(at);
  const int count = end - begin;
  for (int i = 1; i < count; ++i) {
    const int other = begin + (((at - begin + step * i) % count) + count) % count;
    const QPointF way = QPointF(path.elementAt(other)) - point;
    const double length = std::hypot(way.x(), way.y());
    if (length > 1e-6) return way / length;
  }
  return {};
}

/// Along the bisector, as far as both edges need; not endlessly at sharp corners.
QPointF shiftAt(const QPainterPath& path, int begin, int end, int at) {
  const QPointF in = -wayFrom(path, begin, end, at, -1), out = wayFrom(path, begin, end, at, 1);
  if (in.isNull() || out.isNull()) return {};
  const QPointF normals(in.y() + out.y(), -in.x() - out.x());
  return normals / std::max(0.4, 1 + QPointF::dotProduct(in, out));
}

}  // namespace

QPainterPath embolden(const QPainterPath& glyph, double amount, double capitals) {
  if (amount == 0 || !(capitals + 2 * amount > 0)) return glyph;
  const double outwards = doubledArea(glyph) < 0 ? -amount : amount;
  const double scale = capitals / (capitals + 2 * amount);
  QPainterPath result = glyph;
  const int count = glyph.elementCount();
  for (int begin = 0; begin < count;) {
    int end = begin + 1;
    while (end < count && !glyph.elementAt(end).isMoveTo()) ++end;
    for (int i = begin; i < end; ++i) {
      const QPointF moved = glyph.elementAt(i) + outwards * shiftAt(glyph, begin, end, i);
      result.setElementPositionAt(i, moved.x(), (moved.y() - amount) * scale);
    }
    begin = end;
  }
  return result;
}

}  // namespace kelvar::render
