#include "app/Corners.h"

#include <QPointF>
#include <array>
#include <charconv>
#include <cmath>

#include "app/Failure.h"

namespace kelvar::app {
namespace {

constexpr const char* kForm = R"(--points takes four corners like "0,0 400,60 380,600 10,560")";

[[noreturn]] void misuse(const QString& sentence) { throw Failure(Failure::kMisuse, sentence); }

/// All of `text` as one finite number.
double readCoordinate(QStringView text, const QString& point) {
  const QByteArray digits = (text.startsWith(u'+') ? text.sliced(1) : text).toUtf8();
  double value = 0;
  const auto [end, error] = std::from_chars(digits.cbegin(), digits.cend(), value);
  if (error != std::errc() || end != digits.cend() || !std::isfinite(value)) {
    misuse(QStringLiteral("%1, and \"%2\" is not a point of plain numbers")
               .arg(QLatin1String(kForm), point));
  }
  return value;
}

QPointF readCorner(const QString& text) {
  const QList<QStringView> parts = QStringView(text).split(u',');
  if (parts.size() != 2) {
    misuse(QStringLiteral("%1, and \"%2\" is not a point").arg(QLatin1String(kForm), text));
  }
  return {readCoordinate(parts[0], text), readCoordinate(parts[1], text)};
}

/// Twice the signed area of the triangle a, b, c.
double turn(const QPointF& a, const QPointF& b, const QPointF& c) {
  return (b.x() - a.x()) * (c.y() - a.y()) - (b.y() - a.y()) * (c.x() - a.x());
}

void refuseWhatHasNoMap(const std::array<QPointF, 4>& corners) {
  int left = 0, right = 0;
  for (size_t i = 0; i < 4; ++i) {
    for (size_t j = i + 1; j < 4; ++j) {
      if (corners[i].x() == corners[j].x() && corners[i].y() == corners[j].y()) {
        misuse(QStringLiteral("two of the corners in --points are the same point"));
      }
    }
  }
  for (size_t i = 0; i < 4; ++i) {
    const double t = turn(corners[i], corners[(i + 1) % 4], corners[(i + 2) % 4]);
    if (!std::isfinite(t)) misuse(QStringLiteral("the corners in --points are too far apart"));
    left += t < 0;
    right += t > 0;
  }
  if (left + right < 4)
    misuse(
        QStringLiteral("three of the corners in --points lie on one line or too close together"));
  if (left == 2) {
    misuse(
        QStringLiteral("the sides of the shape in --points cross: name the corners in the order "
                       "of its outline"));
  }
  if (left == 1 || right == 1) {
    misuse(QStringLiteral("the shape in --points is concave: no perspective looks like that"));
  }
}

}  // namespace

PointList readCorners(const std::string& text) {
  const QStringList words =
      QString::fromStdString(text).simplified().split(u' ', Qt::SkipEmptyParts);
  PointList corners;
  std::array<QPointF, 4> points;
  for (const QString& word : words) {
    const QPointF point = readCorner(word);
    if (corners.size() < 4) points[size_t(corners.size())] = point;
    corners.append(stringFromPoint(point));
  }
  if (corners.size() != 4) {
    misuse(QStringLiteral("%1, and these are %2").arg(QLatin1String(kForm)).arg(corners.size()));
  }
  refuseWhatHasNoMap(points);
  return corners;
}

}  // namespace kelvar::app
