#pragma once

#include <QPointF>
#include <QStringList>

#include "platform/Export.h"

namespace kelvar {

/// Points in order, each a string "{x, y}". Two points are the same when their strings are. A
/// four-cornered shape runs top-left, top-right, bottom-right, bottom-left; x grows to the right,
/// y downwards.
using PointList = QStringList;

/// The fewest digits that read back to the same double, laid out as "%.17g" would: integral
/// values without a fraction, an exponent below 1e-4 and from 1e17 on. Negative zero prints as 0.
KELVAR_EXPORT QString stringFromNumber(double number);

/// "{x, y}". Reads back to the identical point.
KELVAR_EXPORT QString stringFromPoint(const QPointF& point);

/// Reads a point string. Never fails: braces and blanks are optional and a part that cannot be
/// read is zero.
KELVAR_EXPORT QPointF pointFromString(QStringView string);

/// The trapezoid term (x2 - x1) (y1 + y2) of the edge from `p1` to `p2`.
KELVAR_EXPORT double windingTerm(const QPointF& p1, const QPointF& p2);

/// The sum of `windingTerm` over the edges of the polygon, the closing one included: minus twice
/// its area when it runs clockwise on screen. 0 for an empty list.
KELVAR_EXPORT double windingSum(const PointList& points);

/// Whether the winding sum is not greater than zero. What has no winding counts as clockwise: no
/// points, no area, and sums that are not a number.
KELVAR_EXPORT bool isClockwise(const PointList& points);

}  // namespace kelvar
