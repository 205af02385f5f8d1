#include "sketch/render/paint/DirectionalBlur.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace kelvar::render {
namespace {

/// Of a line; longer ones are looked at in larger steps.
constexpr int kMaxSteps = 64;

/// Coordinates are counted in parts of this many a pixel.
constexpr double kParts = 65536;
constexpr int kPartBits = 16;

int64_t inParts(double pixels) { return std::llround(pixels * kParts); }

/// Where there are pixels that are not empty.
QRect contentOf(const QImage& pixels) {
  QRect content;
  const auto isSeen = [](QRgb pixel) { return pixel != 0; };
  for (int y = 0; y < pixels.height(); ++y) {
    const auto* const row = reinterpret_cast<const QRgb*>(pixels.constScanLine(y));
    const auto* const end = row + pixels.width();
    const auto* const first = std::find_if(row, end, isSeen);
    if (first == end) continue;
    const auto last = std::find_if(std::reverse_iterator(end), std::reverse_iterator(row), isSeen);
    content |= QRect(QPoint(int(first - row), y), QPoint(int(last.base() - row) - 1, y));
  }
  return content;
}

/// Narrows the range of steps to those from `start` on by `step` each that come between two bounds.
void narrow(double start, double step, double low, double high, double* first, double* last) {
  if (std::abs(step) < 1e-9) {
    if (start < low || start > high) *last = *first - 1;
    return;
  }
  const double in = (low - start) / step, out = (high - start) / step;
  *first = std::max(*first, std::floor(std::min(in, out)));
  *last = std::min(*last, std::ceil(std::max(in, out)));
}

/// The sums of two channels of sixteen bits each lie in one number: 129 times 255 fit. `content` is
/// all of `from` that is not empty, and a pixel around it.
QRgb meanAlong(const QImage& from, const QRectF& content, const QPointF& middle,
               const QPointF& streak, int steps) {
  const QPointF start = middle - streak, step = streak / std::max(1, steps);
  const int count = 2 * steps + 1;
  double first = 0, last = count - 1;
  narrow(start.x(), step.x(), content.left(), content.right(), &first, &last);
  narrow(start.y(), step.y(), content.top(), content.bottom(), &first, &last);
  if (first > last) return 0;
  const int64_t across = inParts(step.x()), down = inParts(step.y());
  int64_t x = inParts(start.x()) + int64_t(first) * across;
  int64_t y = inParts(start.y()) + int64_t(first) * down;
  const auto* const pixels = reinterpret_cast<const QRgb*>(from.constBits());
  const auto width = uint64_t(from.width()), height = uint64_t(from.height());
  const qsizetype rowLength = from.bytesPerLine() / qsizetype(sizeof(QRgb));
  uint32_t redAndBlue = 0, alphaAndGreen = 0;
  for (int i = int(first); i <= int(last); ++i, x += across, y += down) {
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

void blurAlong(QImage* pixels, const QRect& needed, double longest,
               const std::function<QPointF(const QPointF&)>& direction,
               const std::stop_token& stop) {
  const QImage from = *pixels;
  const QRectF content = QRectF(contentOf(from)).adjusted(-1, -1, 1, 1);
  const QRect area = needed & pixels->rect();
  for (int y = area.top(); y <= area.bottom() && !stop.stop_requested(); ++y) {
    auto* row = reinterpret_cast<QRgb*>(pixels->scanLine(y));
    for (int x = area.left(); x <= area.right(); ++x) {
      const QPointF middle(x + 0.5, y + 0.5);
      QPointF streak = direction(middle);
      const double length = std::hypot(streak.x(), streak.y());
      if (!std::isfinite(length)) continue;
      if (length > longest) streak *= longest / length;
      row[x] = meanAlong(from, content, middle, streak,
                         int(std::ceil(std::min<double>(std::min(length, longest), kMaxSteps))));
    }
  }
}

}  // namespace kelvar::render
