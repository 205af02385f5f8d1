#include "host/cornersObjection.h"

#include <cmath>

namespace kelvar {
namespace {

/// Twice the signed area of the triangle a, b, c.
double turn(const QPointF& a, const QPointF& b, const QPointF& c) {
  return (b.x() - a.x()) * (c.y() - a.y()) - (b.y() - a.y()) * (c.x() - a.x());
}

bool twoAreTheSame(const std::array<QPointF, 4>& corners) {
  for (size_t i = 0; i < 4; ++i) {
    for (size_t j = i + 1; j < 4; ++j) {
      if (corners[i].x() == corners[j].x() && corners[i].y() == corners[j].y()) return true;
    }
  }
  return false;
}

}  // namespace

QString cornersObjection(const std::array<QPointF, 4>& corners, const QString& where) {
  if (twoAreTheSame(corners)) {
    return QStringLiteral("two of the corners%1 are the same point").arg(where);
  }
  int left = 0, right = 0;
  for (size_t i = 0; i < 4; ++i) {
    const double t = turn(corners[i], corners[(i + 1) % 4], corners[(i + 2) % 4]);
    if (!std::isfinite(t)) return QStringLiteral("the corners%1 are too far apart").arg(where);
    left += t < 0;
    right += t > 0;
  }
  if (left + right < 4) {
    return QStringLiteral("three of the corners%1 lie on one line or too close together")
        .arg(where);
  }
  if (left == 2) {
    return QStringLiteral(
               "the sides of the shape%1 cross, as its corners do not follow its outline")
        .arg(where);
  }
  if (left == 1 || right == 1) {
    return QStringLiteral("the shape%1 is concave: no perspective looks like that").arg(where);
  }
  return {};
}

}  // namespace kelvar
