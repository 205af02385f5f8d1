#include "geometry/PointList.h"

#include <charconv>
#include <cmath>

#include "scene/QuadPlacement.h"

namespace kelvar {
namespace {

/// Reads one coordinate from the front of `text`; 0 when there is none.
double readCoordinate(QStringView text) {
  while (!text.isEmpty() && (text.front().isSpace() || text.front() == u'{')) {
    text = text.sliced(1);
  }
  if (text.startsWith(u'+')) text = text.sliced(1);
  const QByteArray bytes = text.toLatin1();
  double value = 0;
  const auto read = std::from_chars(bytes.cbegin(), bytes.cend(), value);
  return read.ec == std::errc() ? value : 0;
}

}  // namespace

QString stringFromNumber(double number) {
  const double size = std::abs(number);
  const bool plain = size == 0 || (size >= 1e-4 && size < 1e17);
  char digits[32];
  // Adding zero turns negative zero into zero.
  const auto end = std::to_chars(std::begin(digits), std::end(digits), number + 0.0,
                                 plain ? std::chars_format::fixed : std::chars_format::scientific);
  return QString::fromLatin1(digits, end.ptr - digits);
}

QString stringFromPoint(const QPointF& point) {
  return QStringLiteral("{%1, %2}").arg(stringFromNumber(point.x()), stringFromNumber(point.y()));
}

QPointF pointFromString(QStringView string) {
  const qsizetype comma = string.indexOf(u',');
  if (comma < 0) return {readCoordinate(string), 0};
  return {readCoordinate(string.first(comma)), readCoordinate(string.sliced(comma + 1))};
}

std::vector<warp::Point> pointsFromStrings(const PointList& strings) {
  std::vector<warp::Point> points;
  points.reserve(size_t(strings.size()));
  for (const QString& string : strings) {
    const QPointF point = pointFromString(string);
    points.push_back({point.x(), point.y()});
  }
  return points;
}

PointList stringsFromPoints(std::span<const warp::Point> points) {
  PointList strings;
  for (const warp::Point& point : points) strings.append(stringFromPoint({point.x, point.y}));
  return strings;
}

double windingTerm(const QPointF& p1, const QPointF& p2) {
  return windingTerm(warp::Point{p1.x(), p1.y()}, warp::Point{p2.x(), p2.y()});
}

double windingSum(const PointList& points) { return windingSum(pointsFromStrings(points)); }

bool isClockwise(const PointList& points) { return isClockwise(pointsFromStrings(points)); }

}  // namespace kelvar
