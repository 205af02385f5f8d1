#include "sketch/render/paint/canCombine.h"

#include <QPolygonF>
#include <algorithm>
#include <vector>

namespace kelvar::render {
namespace {

struct Side {
  QPointF top, bottom;
  double left() const { return std::min(top.x(), bottom.x()); }
  double right() const { return std::max(top.x(), bottom.x()); }
};

void addSides(const QPainterPath& path, std::vector<Side>* sides) {
  for (const QPolygonF& polygon : path.toSubpathPolygons()) {
    for (qsizetype i = 0; i < polygon.size(); ++i) {
      QPointF a = polygon[i], b = polygon[(i + 1) % polygon.size()];
      if (a.y() > b.y()) std::swap(a, b);
      if (a != b) sides->push_back({a, b});
    }
  }
}

/// Above 0 where `point` lies on one hand of the side, below 0 on the other.
double handOf(const Side& side, const QPointF& point) {
  const QPointF way = side.bottom - side.top, to = point - side.top;
  return way.x() * to.y() - way.y() * to.x();
}

/// Ends that touch and sides that lie on one another count, since they are split there too.
bool doMeet(const Side& a, const Side& b) {
  return a.left() <= b.right() && b.left() <= a.right() &&
         handOf(a, b.top) * handOf(a, b.bottom) <= 0 && handOf(b, a.top) * handOf(b, a.bottom) <= 0;
}

}  // namespace

bool canCombine(const QPainterPath& first, const QPainterPath& second) {
  // Before curves are cut, which takes memory.
  if (first.elementCount() + second.elementCount() > kMaxCorners) return false;
  std::vector<Side> sides;
  addSides(first, &sides);
  addSides(second, &sides);
  const auto count = qint64(sides.size());
  if (count * count <= kMaxCorners) return true;
  // Each side touches the one before it, which makes no new corner.
  qint64 meetingsLeft = count + (kMaxCorners - count) / 2;
  if (count > kMaxCorners) return false;
  std::sort(sides.begin(), sides.end(),
            [](const Side& a, const Side& b) { return a.top.y() < b.top.y(); });
  std::vector<const Side*> open;
  for (const Side& side : sides) {
    std::erase_if(open, [&](const Side* other) { return other->bottom.y() < side.top.y(); });
    for (const Side* other : open) {
      if (doMeet(side, *other) && --meetingsLeft < 0) return false;
    }
    open.push_back(&side);
  }
  return true;
}

}  // namespace kelvar::render
