#pragma once

#include <QPointF>

#include "platform/image/BezierPath.h"

namespace kelvar {

/// The shape of a cut corner: convex, concave, straight or notched. The values are those in
/// documents.
enum class CornerStyle { Rounded = 0, RoundedInverted = 1, Angled = 2, Squared = 3 };

/// A corner between two straight sides, to be rounded with a radius.
struct RoundedCorner {
  QPointF at;
  /// The ends of the two sides.
  QPointF before;
  QPointF after;
  CornerStyle style = CornerStyle::Rounded;
  /// Whether the curvature changes gradually, so that the curve begins farther from the corner.
  bool isSmooth = false;

  /// How far the arc extends along the sides: for the requested radius, and after the sides were
  /// divided among their corners. 0 for a sharp corner.
  double wanted = 0;
  double reach = 0;
  /// How much of each side the corner may use, including the part where the curvature changes.
  double roomBefore = 0;
  double roomAfter = 0;

  /// Sets `wanted` and `reach`.
  void setRadius(double radius);

  /// Where the cut begins and ends.
  QPointF start() const;
  QPointF end() const;
  /// Draws from `start`, which must be the current point, to `end`.
  void draw(BezierPath* path) const;

 private:
  double fullReach() const;
  QPointF along(double before, double after) const;
  /// The change of direction at the corner in radians, 0 to pi.
  double turn() const;
  void drawSmooth(BezierPath* path) const;
};

}  // namespace kelvar
