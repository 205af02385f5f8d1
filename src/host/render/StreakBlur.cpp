#include "host/render/StreakBlur.h"

#include <algorithm>
#include <cmath>

namespace kelvar::render {
namespace {

/// Of a line; longer ones are looked at in larger steps.
constexpr int kMostSteps = 64;

QRgb meanAlong(const QImage& from, const QPointF& middle, const QPointF& streak, int steps) {
  int sums[4] = {};
  for (int i = -steps; i <= steps; ++i) {
    const QPointF at = middle + streak * (double(i) / std::max(1, steps));
    const int x = int(std::floor(at.x())), y = int(std::floor(at.y()));
    if (x < 0 || y < 0 || x >= from.width() || y >= from.height()) continue;
    const QRgb pixel = reinterpret_cast<const QRgb*>(from.constScanLine(y))[x];
    sums[0] += qAlpha(pixel);
    sums[1] += qRed(pixel);
    sums[2] += qGreen(pixel);
    sums[3] += qBlue(pixel);
  }
  const int count = 2 * steps + 1;
  for (int& sum : sums) sum = (sum + count / 2) / count;
  return qRgba(sums[1], sums[2], sums[3], sums[0]);
}

}  // namespace

void smear(QImage* pixels, double longest, const std::function<QPointF(const QPointF&)>& streakAt) {
  const QImage from = *pixels;
  for (int y = 0; y < pixels->height(); ++y) {
    auto* row = reinterpret_cast<QRgb*>(pixels->scanLine(y));
    for (int x = 0; x < pixels->width(); ++x) {
      const QPointF middle(x + 0.5, y + 0.5);
      QPointF streak = streakAt(middle);
      const double length = std::hypot(streak.x(), streak.y());
      if (length > longest) streak *= longest / length;
      const int steps = std::min(kMostSteps, int(std::ceil(std::min(length, longest))));
      row[x] = meanAlong(from, middle, streak, steps);
    }
  }
}

}  // namespace kelvar::render
