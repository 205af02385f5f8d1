#pragma once

#include <QList>
#include <QPointF>
#include <array>

#include "platform/Export.h"

namespace kelvar {

/// A vector path: a list of elements, each a kind and its points, in the path's own units.
///
/// A subpath runs from a move to the next move or close; an element after a close goes on from
/// the closed subpath's start, and a path that does not begin with a move begins at (0, 0).
/// Elements are kept as they were added: nothing is inserted, merged or checked. A plain value.
class KELVAR_EXPORT BezierPath {
 public:
  enum class Kind { Move = 0, Line = 1, Curve = 2, Close = 3 };

  /// Move and line use the first point. A curve has its two control points and then its end. A
  /// close has none.
  struct Element {
    Kind kind = Kind::Move;
    std::array<QPointF, 3> points{};

    /// Where the pen is after a move, line or curve.
    QPointF end() const { return kind == Kind::Curve ? points[2] : points[0]; }
    bool operator==(const Element&) const = default;
  };

  /// Farthest that `flattened` leaves a curve, in the path's units.
  static constexpr double kDefaultFlatness = 0.6;

  void moveTo(const QPointF& point) { elements_.append({Kind::Move, {point}}); }
  void lineTo(const QPointF& point) { elements_.append({Kind::Line, {point}}); }
  void curveTo(const QPointF& end, const QPointF& control1, const QPointF& control2) {
    elements_.append({Kind::Curve, {control1, control2, end}});
  }
  void close() { elements_.append({Kind::Close, {}}); }

  const QList<Element>& elements() const { return elements_; }

  /// The same path with each curve replaced by lines of equal parameter steps, as many as keep
  /// within `flatness` of the curve; a curve whose handles lie on the line between its ends is that
  /// line. The same path gives the same lines everywhere.
  /// Source of the count: Wang, "The subdivision algorithm for the generation of Bezier curves",
  /// 1984.
  BezierPath flattened(double flatness = kDefaultFlatness) const;

  /// The same subpaths in the same order, each traversed backwards. An open subpath starts where
  /// it ended. A closed one stays closed and starts where it started: its closing edge is drawn
  /// first, so a rectangle drawn a, b, c, d comes back a, d, c, b. Keeping the order of subpaths
  /// matters to whoever reads only the first.
  BezierPath reversed() const;

 private:
  QList<Element> elements_;
};

}  // namespace kelvar
