#pragma once

#include <QPainterPath>
#include <QPolygonF>
#include <QTransform>
#include <optional>

namespace kelvar::render {

/// The path that a text runs along, in the text layer's coordinates. Distances are measured along
/// the path, in the same units.
class TextPath {
 public:
  /// The first subpath of the outline, in its own direction.
  explicit TextPath(const QPainterPath& outline);

  /// The distance along the path to its point nearest to `point`.
  double nearestTo(const QPointF& point) const;

  /// For a text that begins at `start`: maps a glyph that lies on the x axis with its middle at 0
  /// to the place at distance `along` from there. None beyond the ends of an open path, or after
  /// one full round of a closed path.
  std::optional<QTransform> placeAt(double start, double along) const;

 private:
  QPolygonF points_;
  QList<double> distances_;  ///< The distance to each point.
  bool isClosed_ = false;
};

}  // namespace kelvar::render
