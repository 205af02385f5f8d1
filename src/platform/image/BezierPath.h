#pragma once

#include <QList>
#include <QPointF>
#include <QRectF>
#include <QTransform>
#include <array>

#include "platform/Export.h"

namespace kelvar {

/// A vector path: a list of elements, each a kind and its points, in the path's own units.
///
/// A subpath runs from a move to the next move or close; an element after a close continues from
/// the closed subpath's start, and a path that does not begin with a move begins at (0, 0).
/// Elements are stored as they were added: nothing is inserted, merged or checked. A plain value.
class KELVAR_EXPORT BezierPath {
 public:
  enum class Kind { Move = 0, Line = 1, Curve = 2, Close = 3 };

  /// Move and line use the first point. A curve has its two control points and then its end. A
  /// close has none.
  struct Element {
    Kind kind = Kind::Move;
    std::array<QPointF, 3> points{};

    size_t pointCount() const { return kind == Kind::Curve ? 3 : kind == Kind::Close ? 0 : 1; }
    /// The current point after a move, line or curve.
    QPointF end() const { return kind == Kind::Curve ? points[2] : points[0]; }
    bool operator==(const Element&) const = default;
  };

  /// Maximum distance of `flattened` from a curve, in the path's units.
  static constexpr double kDefaultFlatness = 0.6;

  /// The distance of a control point from its end where a curve draws a quarter of a circle of
  /// radius 1: 4/3 (sqrt(2) - 1).
  static constexpr double kQuarterHandle = 0.5522847498307936;

  void moveTo(const QPointF& point) { elements_.append({Kind::Move, {point}}); }
  void lineTo(const QPointF& point) { elements_.append({Kind::Line, {point}}); }
  void curveTo(const QPointF& end, const QPointF& control1, const QPointF& control2) {
    elements_.append({Kind::Curve, {control1, control2, end}});
  }
  void close() { elements_.append({Kind::Close, {}}); }

  const QList<Element>& elements() const { return elements_; }

  /// The smallest rectangle around what is drawn; null for a path without points.
  QRectF bounds() const;
  /// The smallest rectangle around all points, with those that control curves.
  QRectF controlPointBounds() const;

  /// The path with all its points mapped.
  BezierPath mapped(const QTransform& transform) const;

  /// The same path with each curve replaced by lines of equal parameter steps, as many as needed to
  /// stay within `flatness` of the curve; a curve whose control points lie on the line between its
  /// ends becomes that line. The same path gives the same lines everywhere. Source of the count:
  /// Wang, "The subdivision algorithm for the generation of Bezier curves", 1984.
  BezierPath flattened(double flatness = kDefaultFlatness) const;

  /// The same subpaths in the same order, each traversed backwards. An open subpath starts where it
  /// ended. A closed one stays closed and starts where it started: its closing edge is drawn first,
  /// so a rectangle drawn a, b, c, d becomes a, d, c, b. The order of subpaths matters to code that
  /// reads only the first.
  BezierPath reversed() const;

 private:
  QList<Element> elements_;
};

}  // namespace kelvar
