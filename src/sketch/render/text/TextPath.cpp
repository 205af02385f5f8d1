#include "sketch/render/text/TextPath.h"

#include <QLineF>
#include <algorithm>
#include <cmath>

namespace kelvar::render {
namespace {

/// Curves are flattened at this scale.
constexpr double kDetail = 16;

QPolygonF firstSubpath(const QPainterPath& outline) {
  const auto parts = outline.toSubpathPolygons(QTransform::fromScale(kDetail, kDetail));
  QPolygonF points;
  if (parts.isEmpty()) return points;
  for (const QPointF& point : parts.first()) {
    if (points.isEmpty() || point / kDetail != points.last()) points.append(point / kDetail);
  }
  return points;
}

}  // namespace

TextPath::TextPath(const QPainterPath& outline) : points_(firstSubpath(outline)) {
  isClosed_ = points_.size() > 2 && points_.isClosed();
  double distance = 0;
  for (qsizetype i = 0; i < points_.size(); ++i) {
    if (i > 0) distance += QLineF(points_[i - 1], points_[i]).length();
    distances_.append(distance);
  }
}

double TextPath::nearestTo(const QPointF& point) const {
  double best = 0, least = INFINITY;
  for (qsizetype i = 1; i < points_.size(); ++i) {
    const QPointF along = points_[i] - points_[i - 1], to = point - points_[i - 1];
    const double part =
        std::clamp(QPointF::dotProduct(along, to) / QPointF::dotProduct(along, along), 0.0, 1.0);
    const double away = QLineF(point, points_[i - 1] + part * along).length();
    if (!(away < least)) continue;
    least = away;
    best = distances_[i - 1] + part * (distances_[i] - distances_[i - 1]);
  }
  return best;
}

std::optional<QTransform> TextPath::placeAt(double start, double along) const {
  if (points_.size() < 2 || along > distances_.last()) return {};
  const double length = distances_.last();
  double distance = start + along;
  if (isClosed_) distance -= std::floor(distance / length) * length;
  if (!(distance >= 0 && distance <= length)) return {};
  const auto after = std::upper_bound(distances_.begin() + 1, distances_.end() - 1, distance);
  const qsizetype i = after - distances_.begin();
  const QLineF piece(points_[i - 1], points_[i]);
  const QPointF at = piece.pointAt((distance - distances_[i - 1]) / piece.length());
  const double cosine = piece.dx() / piece.length(), sine = piece.dy() / piece.length();
  return QTransform(cosine, sine, -sine, cosine, at.x(), at.y());
}

}  // namespace kelvar::render
