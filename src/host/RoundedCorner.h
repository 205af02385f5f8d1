#pragma once

#include <QPointF>

#include "platform/BezierPath.h"

namespace kelvar {

/// How a corner is cut, as documents number it: outwards round, inwards round, straight across, or
/// by a notch.
enum class CornerStyle { Rounded = 0, RoundedInverted = 1, Angled = 2, Squared = 3 };

/// A corner between two straight sides that is to be rounded with a radius.
struct RoundedCorner {
  QPointF at;
  /// The ends of the two sides.
  QPointF before;
  QPointF after;
  CornerStyle style = CornerStyle::Rounded;
  /// Whether the curvature grows and falls off gradually, for which the cut begins earlier.
  bool isSmooth = false;

  /// How far along the sides the circle's cut reaches: what the radius asks for, and what is left
  /// of it when the sides are shared. 0 for a corner that stays sharp.
  double wanted = 0;
  double reach = 0;
  /// How much of each side the corner may take, the gradual part included.
  double roomBefore = 0;
  double roomAfter = 0;

  /// Sets `wanted` and `reach`.
  void setRadius(double radius);

  /// Where the cut begins and ends.
  QPointF start() const;
  QPointF end() const;
  /// From `start`, where the pen must be, to `end`.
  void draw(BezierPath* path) const;

 private:
  double fullReach() const;
  QPointF along(double before, double after) const;
  /// The angle that the direction turns by, 0 to pi.
  double turn() const;
  void drawSmooth(BezierPath* path) const;
};

}  // namespace kelvar
