#pragma once

#include <QPointF>
#include <QStringList>
#include <span>
#include <vector>

#include "pixels/warp/Homography.h"
#include "platform/Export.h"

namespace kelvar {

/// A list of points, each a string "{x, y}". Points are equal if their strings are. A four-cornered
/// shape runs top-left, top-right, bottom-right, bottom-left; x points right, y down.
using PointList = QStringList;

/// The shortest text that reads back as the same double, formatted as "%.17g" would: whole numbers
/// without a fraction, an exponent below 1e-4 and from 1e17 on. Negative zero prints as 0.
KELVAR_EXPORT QString stringFromNumber(double number);

/// "{x, y}". Reads back as the identical point.
KELVAR_EXPORT QString stringFromPoint(const QPointF& point);

/// Parses a point. Never fails: braces and spaces are optional, and a part that cannot be parsed is
/// zero.
KELVAR_EXPORT QPointF pointFromString(QStringView string);

/// Conversion to and from numeric points, which all computations use.
KELVAR_EXPORT std::vector<warp::Point> pointsFromStrings(const PointList& strings);
KELVAR_EXPORT PointList stringsFromPoints(std::span<const warp::Point> points);

/// The trapezoid term (x2 - x1) (y1 + y2) of the edge from `p1` to `p2`.
KELVAR_EXPORT double windingTerm(const QPointF& p1, const QPointF& p2);

/// The sum of `windingTerm` over the edges of the polygon, including the closing one: minus twice
/// its area if it runs clockwise on screen. 0 for an empty list.
KELVAR_EXPORT double windingSum(const PointList& points);

/// Whether the winding sum is not greater than zero. Lists without a winding count as clockwise: no
/// points, no area, or a sum that is NaN.
KELVAR_EXPORT bool isClockwise(const PointList& points);

}  // namespace kelvar
