#pragma once

#include <QPainterPath>
#include <QPolygonF>
#include <QTransform>
#include <optional>

namespace kelvar::render {

/// A line that a text runs along, in the text layer's coordinates. Distances are measured along it,
/// in those units.
class TextPath {
 public:
  /// The first part of the outline, in the direction that it is drawn in.
  explicit TextPath(const QPainterPath& outline);

  /// How far along it the point is that lies nearest to `point`.
  double nearestTo(const QPointF& point) const;

  /// For a text that begins at `start`: leads from a glyph that stands on the x axis with its
  /// middle at 0 to the place `along` farther on. None beyond the ends of an open line; a closed
  /// one is gone round once.
  std::optional<QTransform> placeAt(double start, double along) const;

 private:
  QPolygonF points_;
  QList<double> distances_;  ///< Of each point.
  bool isClosed_ = false;
};

}  // namespace kelvar::render
