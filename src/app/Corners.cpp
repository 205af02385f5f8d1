#include "app/Corners.h"

#include <QPointF>
#include <array>
#include <charconv>
#include <cmath>

#include "app/Failure.h"
#include "host/cornersObjection.h"

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
  const QString objection = cornersObjection(points, QStringLiteral(" in --points"));
  if (!objection.isEmpty()) misuse(objection);
  return corners;
}

}  // namespace kelvar::app
