#include "host/render/StreakBlur.h"

#include <algorithm>
#include <cmath>

namespace kelvar::render {
namespace {

/// Of a line; longer ones are looked at in larger steps.
constexpr int kMostSteps = 64;

/// Coordinates are counted in parts of this many a pixel.
constexpr double kParts = 65536;
constexpr int kPartBits = 16;

int64_t inParts(double pixels) { return std::llround(pixels * kParts); }

/// The sums of two channels of sixteen bits each lie in one number: 129 times 255 fit.
QRgb meanAlong(const QImage& from, const QPointF& middle, const QPointF& streak, int steps) {
  const QPointF first = middle - streak, step = streak / std::max(1, steps);
  int64_t x = inParts(first.x()), y = inParts(first.y());
  const int64_t across = inParts(step.x()), down = inParts(step.y());
  const auto* const pixels = reinterpret_cast<const QRgb*>(from.constBits());
  const auto width = uint64_t(from.width()), height = uint64_t(from.height());
  const qsizetype rowLength = from.bytesPerLine() / qsizetype(sizeof(QRgb));
  uint32_t redAndBlue = 0, alphaAndGreen = 0;
  const int count = 2 * steps + 1;
  for (int i = 0; i < count; ++i, x += across, y += down) {
    const int64_t column = x >> kPartBits, row = y >> kPartBits;
    if (uint64_t(column) >= width || uint64_t(row) >= height) continue;
    const QRgb pixel = pixels[row * rowLength + column];
    redAndBlue += pixel & 0xff00ff;
    alphaAndGreen += (pixel >> 8) & 0xff00ff;
  }
  const auto mean = [count](uint32_t sum) { return (int(sum) + count / 2) / count; };
  return qRgba(mean(redAndBlue >> 16), mean(alphaAndGreen & 0xffff), mean(redAndBlue & 0xffff),
               mean(alphaAndGreen >> 16));
}

}  // namespace

void smear(QImage* pixels, const QRect& needed, double longest,
           const std::function<QPointF(const QPointF&)>& streakAt) {
  const QImage from = *pixels;
  const QRect area = needed & pixels->rect();
  for (int y = area.top(); y <= area.bottom(); ++y) {
    auto* row = reinterpret_cast<QRgb*>(pixels->scanLine(y));
    for (int x = area.left(); x <= area.right(); ++x) {
      const QPointF middle(x + 0.5, y + 0.5);
      QPointF streak = streakAt(middle);
      const double length = std::hypot(streak.x(), streak.y());
      if (!std::isfinite(length)) continue;
      if (length > longest) streak *= longest / length;
      row[x] = meanAlong(from, middle, streak,
                         int(std::ceil(std::min<double>(std::min(length, longest), kMostSteps))));
    }
  }
}

}  // namespace kelvar::render
