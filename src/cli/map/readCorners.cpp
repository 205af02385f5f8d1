#include "cli/map/readCorners.h"

#include <QStringList>
#include <charconv>
#include <cmath>

#include "cli/CommandError.h"
#include "scene/validateQuad.h"

namespace kelvar::cli {
namespace {

[[noreturn]] void misuseOfPoints(const QString& problem) {
  misuse(QStringLiteral(R"(--points takes four corners like "0,0 400,60 380,600 10,560", %1)")
             .arg(problem));
}

/// Parses all of `text` as one finite number.
double readCoordinate(QStringView text, const QString& point) {
  const QByteArray digits = (text.startsWith(u'+') ? text.sliced(1) : text).toUtf8();
  double value = 0;
  const auto [end, error] = std::from_chars(digits.cbegin(), digits.cend(), value);
  if (error != std::errc() || end != digits.cend() || !std::isfinite(value)) {
    misuseOfPoints(QStringLiteral("and \"%1\" is not two plain numbers").arg(point));
  }
  return value + 0.0;  // Turns -0 into 0.
}

warp::Point readCorner(const QString& text) {
  const QList<QStringView> parts = QStringView(text).split(u',');
  if (parts.size() != 2) misuseOfPoints(QStringLiteral("and \"%1\" is not a point").arg(text));
  return {readCoordinate(parts[0], text), readCoordinate(parts[1], text)};
}

}  // namespace

warp::Quad readCorners(const std::string& text) {
  const QStringList words =
      QString::fromStdString(text).simplified().split(u' ', Qt::SkipEmptyParts);
  warp::Quad corners;
  for (qsizetype i = 0; i < words.size(); ++i) {
    const warp::Point corner = readCorner(words[i]);
    if (i < 4) corners[size_t(i)] = corner;
  }
  if (words.size() != 4) misuseOfPoints(QStringLiteral("not %1 points").arg(words.size()));
  if (const Result<void> valid = validateQuad(corners); !valid) {
    misuse(QStringLiteral("--points: ") + QString::fromStdString(valid.error().message));
  }
  return corners;
}

}  // namespace kelvar::cli
