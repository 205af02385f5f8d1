#include "platform/BezierPath.h"

#include <algorithm>
#include <cmath>

namespace kelvar {
namespace {

using Element = BezierPath::Element;
using Kind = BezierPath::Kind;

constexpr double kMaximumLines = 4096;

double distanceToSegment(const QPointF& point, const QPointF& from, const QPointF& to) {
  const QPointF along = to - from, off = point - from;
  const double length = QPointF::dotProduct(along, along);
  const double at = length > 0 ? std::clamp(QPointF::dotProduct(off, along) / length, 0.0, 1.0) : 0;
  const QPointF away = off - at * along;
  return std::hypot(away.x(), away.y());
}

/// How many lines keep within `flatness` of the curve. One where it runs along the line between
/// its ends, however unevenly: a curve leaves that by at most 3/4 of what its handles do.
int lineCount(const QPointF& start, const Element& curve, double flatness) {
  const auto& [c1, c2, end] = curve.points;
  const double off = std::max(distanceToSegment(c1, start, end), distanceToSegment(c2, start, end));
  if (0.75 * off <= flatness) return 1;
  const QPointF bend1 = start - 2 * c1 + c2, bend2 = c1 - 2 * c2 + end;
  const double bend = std::max(std::hypot(bend1.x(), bend1.y()), std::hypot(bend2.x(), bend2.y()));
  const double count = std::ceil(std::sqrt(0.75 * bend / flatness));
  return count > 1 ? int(std::min(count, kMaximumLines)) : 1;
}

QPointF pointOnCurve(const QPointF& start, const Element& curve, double t) {
  const auto& [c1, c2, end] = curve.points;
  const double s = 1 - t;
  return s * s * s * start + 3 * s * s * t * c1 + 3 * s * t * t * c2 + t * t * t * end;
}

/// Appends the drawn elements of one subpath that begins at `start`, last one first.
void appendReversed(BezierPath& path, const QPointF& start, const QList<Element>& drawn,
                    bool closed) {
  const QPointF end = drawn.isEmpty() ? start : drawn.last().end();
  path.moveTo(closed ? start : end);
  if (closed && !drawn.isEmpty() && end != start) path.lineTo(end);
  for (qsizetype i = drawn.size() - 1; i >= 0; --i) {
    const QPointF to = i > 0 ? drawn[i - 1].end() : start;
    if (drawn[i].kind == Kind::Curve) {
      path.curveTo(to, drawn[i].points[1], drawn[i].points[0]);
    } else if (!(closed && i == 0)) {
      path.lineTo(to);
    }
  }
  if (closed) path.close();
}

}  // namespace

BezierPath BezierPath::flattened(double flatness) const {
  BezierPath flat;
  QPointF start, current;
  for (const Element& element : elements_) {
    if (element.kind == Kind::Curve) {
      const int lines = lineCount(current, element, flatness);
      for (int i = 1; i < lines; ++i) {
        flat.lineTo(pointOnCurve(current, element, double(i) / lines));
      }
      flat.lineTo(element.end());
    } else {
      flat.elements_.append(element);
    }
    if (element.kind == Kind::Move) start = element.end();
    current = element.kind == Kind::Close ? start : element.end();
  }
  return flat;
}

BezierPath BezierPath::reversed() const {
  BezierPath path;
  QPointF start;
  qsizetype i = 0;
  while (i < elements_.size()) {
    const bool moves = elements_[i].kind == Kind::Move;
    if (moves) start = elements_[i++].end();
    QList<Element> drawn;
    while (i < elements_.size() &&
           (elements_[i].kind == Kind::Line || elements_[i].kind == Kind::Curve)) {
      drawn.append(elements_[i++]);
    }
    const bool closed = i < elements_.size() && elements_[i].kind == Kind::Close;
    if (closed) ++i;
    if (!moves && drawn.isEmpty()) {
      path.close();
    } else {
      appendReversed(path, start, drawn, closed);
    }
  }
  return path;
}

}  // namespace kelvar
