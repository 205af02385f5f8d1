#include "sketch/document/RoundedCorner.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace kelvar {
namespace {

/// Turns less sharp than this are lines, sharper ones spikes: neither has a circle to speak of.
constexpr double kMinTurn = 1e-4;

/// A smooth corner reaches this much further than its circle.
constexpr double kSmoothReach = 1.52866483;

/// A quarter turn from (1.53, 0) on one side to (0, 1.53) on the other in three curves, as
/// (distance back along the first side, distance along the second) in radii: the outline that the
/// platform's own rounded rectangles have had since 2013, as published by those who measured it.
using Curves = std::array<QPointF, 10>;
const Curves kSmooth{QPointF(1.52866483, 0),   {1.08849296, 0},          {0.86840694, 0},
                     {0.63149399, 0.07491100}, {0.37282392, 0.16905899}, {0.16905899, 0.37282392},
                     {0.07491100, 0.63149399}, {0, 0.86840694},          {0, 1.08849296},
                     {0, 1.52866483}};

/// The quarter circle in three curves whose joints lie where those of `kSmooth` do.
Curves circleCurves() {
  const double middle = std::atan2(1 - kSmooth[3].x(), 1 - kSmooth[3].y());
  const double angles[] = {0, middle, std::numbers::pi / 2 - middle, std::numbers::pi / 2};
  Curves curves;
  for (size_t i = 0; i < 3; ++i) {
    const double a = angles[i], b = angles[i + 1], handle = 4.0 / 3 * std::tan((b - a) / 4);
    const QPointF from(1 - std::sin(a), 1 - std::cos(a)), to(1 - std::sin(b), 1 - std::cos(b));
    curves[3 * i] = from;
    curves[3 * i + 1] = from + QPointF(-std::cos(a), std::sin(a)) * handle;
    curves[3 * i + 2] = to - QPointF(-std::cos(b), std::sin(b)) * handle;
    curves[3 * i + 3] = to;
  }
  return curves;
}

QPointF unit(const QPointF& vector) {
  const double length = std::hypot(vector.x(), vector.y());
  return length > 0 ? vector / length : QPointF();
}

}  // namespace

double RoundedCorner::turn() const {
  const QPointF in = unit(at - before), out = unit(after - at);
  const double dot = QPointF::dotProduct(in, out);
  const double cross = in.x() * out.y() - in.y() * out.x();
  return std::abs(std::atan2(cross, dot));
}

void RoundedCorner::setRadius(double radius) {
  const double angle = turn();
  const bool isCorner = angle > kMinTurn && angle < std::numbers::pi - kMinTurn;
  wanted = isCorner && at != before && at != after ? radius * std::tan(angle / 2) : 0;
  reach = wanted;
}

double RoundedCorner::fullReach() const {
  if (!isSmooth || style != CornerStyle::Rounded) return reach;
  return std::max(reach, std::min({reach * kSmoothReach, roomBefore, roomAfter}));
}

QPointF RoundedCorner::along(double back, double forth) const {
  return at + unit(before - at) * back + unit(after - at) * forth;
}

QPointF RoundedCorner::start() const { return along(fullReach(), 0); }
QPointF RoundedCorner::end() const { return along(0, fullReach()); }

void RoundedCorner::draw(BezierPath* path) const {
  if (fullReach() > reach) return drawSmooth(path);
  // An arc over the angle t and of radius r has handles of 4/3 tan(t / 4) r; the reach is
  // r tan(t / 2).
  const double angle = turn();
  const double left = 1 - 4.0 / 3 * std::tan(angle / 4) / std::tan(angle / 2);
  const QPointF from = start(), to = end();
  const QPointF inner = from + to - at;
  switch (style) {
    case CornerStyle::Rounded:
      path->curveTo(to, along(reach * left, 0), along(0, reach * left));
      break;
    case CornerStyle::RoundedInverted:
      path->curveTo(to, inner + (from - inner) * left, inner + (to - inner) * left);
      break;
    case CornerStyle::Squared:
      path->lineTo(inner);
      path->lineTo(to);
      break;
    case CornerStyle::Angled:
      path->lineTo(to);
  }
}

void RoundedCorner::drawSmooth(BezierPath* path) const {
  static const Curves kCircle = circleCurves();
  // Where a side is too short for all of it, something between a circle and the smooth corner.
  const double share = (fullReach() / reach - 1) / (kSmoothReach - 1);
  std::array<QPointF, 10> points;
  for (size_t i = 0; i < points.size(); ++i) {
    const QPointF mixed = (kCircle[i] * (1 - share) + kSmooth[i] * share) * reach;
    points[i] = along(mixed.x(), mixed.y());
  }
  for (size_t i = 0; i < 9; i += 3) path->curveTo(points[i + 3], points[i + 1], points[i + 2]);
}

}  // namespace kelvar
