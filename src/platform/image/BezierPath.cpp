#include "platform/image/BezierPath.h"

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

/// The number of lines needed to stay within `flatness` of the curve. One if it follows the line
/// between its ends at whatever speed: its distance from that is at most 3/4 of that of its control
/// points.
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

/// Grows to each point that is added.
class Bounds {
 public:
  void add(const QPointF& point) {
    left_ = std::min(left_, point.x());
    right_ = std::max(right_, point.x());
    top_ = std::min(top_, point.y());
    bottom_ = std::max(bottom_, point.y());
  }
  QRectF rect() const {
    return left_ > right_ ? QRectF() : QRectF(QPointF(left_, top_), QPointF(right_, bottom_));
  }

 private:
  double left_ = INFINITY, top_ = INFINITY, right_ = -INFINITY, bottom_ = -INFINITY;
};

/// Adds where the curve turns back in one coordinate: the roots of its derivative, a t^2 + b t + c.
void addTurns(const QPointF& start, const Element& curve, Bounds* bounds) {
  const auto& [c1, c2, end] = curve.points;
  const QPointF a = end - start + 3 * (c1 - c2), b = 2 * (start - 2 * c1 + c2), c = c1 - start;
  const auto addRoots = [&](double a, double b, double c) {
    // Stable for a small a, where one root is close to that of the line.
    const double q = -0.5 * (b + std::copysign(std::sqrt(b * b - 4 * a * c), b));
    for (const double t : {q / a, c / q}) {
      if (t > 0 && t < 1) bounds->add(pointOnCurve(start, curve, t));
    }
  };
  addRoots(a.x(), b.x(), c.x());
  addRoots(a.y(), b.y(), c.y());
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

QRectF BezierPath::bounds() const {
  Bounds bounds;
  QPointF start, current;
  for (const Element& element : elements_) {
    if (element.kind == Kind::Close) {
      current = start;
      continue;
    }
    if (element.kind == Kind::Curve) addTurns(current, element, &bounds);
    bounds.add(element.end());
    if (element.kind == Kind::Move) start = element.end();
    current = element.end();
  }
  return bounds.rect();
}

QRectF BezierPath::controlPointBounds() const {
  Bounds bounds;
  for (const Element& element : elements_) {
    for (size_t i = 0; i < element.pointCount(); ++i) bounds.add(element.points[i]);
  }
  return bounds.rect();
}

BezierPath BezierPath::mapped(const QTransform& transform) const {
  BezierPath mapped = *this;
  for (Element& element : mapped.elements_) {
    for (size_t i = 0; i < element.pointCount(); ++i) {
      element.points[i] = transform.map(element.points[i]);
    }
  }
  return mapped;
}

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
