#include "geometry/PointList.h"

#include <charconv>
#include <cmath>

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

double windingTerm(const QPointF& p1, const QPointF& p2) {
  return (p2.x() - p1.x()) * (p1.y() + p2.y());
}

double windingSum(const PointList& points) {
  double sum = 0;
  for (qsizetype i = 0; i < points.size(); ++i) {
    const qsizetype next = i + 1 < points.size() ? i + 1 : 0;
    sum += windingTerm(pointFromString(points[i]), pointFromString(points[next]));
  }
  return sum;
}

bool isClockwise(const PointList& points) { return !(windingSum(points) > 0); }

}  // namespace kelvar
