#include "sketch/render/paint/paintInBands.h"

#include <algorithm>
#include <cmath>

namespace kelvar::render {
namespace {

constexpr int kMaxBandHeight = 64;
/// Of the painter, from pixel to pixel of a row: about a second.
constexpr double kManySteps = 1e8;
/// What a point of the path costs in each band, in such steps.
constexpr double kStepsToAPoint = 20;

/// The pixels that the path's sides touch, as often as they do, as far as they are in sight.
double touches(const QPainterPath& path, const QTransform& toImage, const QRectF& sight) {
  double count = 0;
  QPointF last;
  for (int i = 0; i < path.elementCount(); ++i) {
    const QPainterPath::Element element = path.elementAt(i);
    const QPointF point = toImage.map(QPointF(element));
    const QPointF at(std::clamp(point.x(), sight.left(), sight.right()),
                     std::clamp(point.y(), sight.top(), sight.bottom()));
    const QPointF way = at - last;
    if (!element.isMoveTo()) count += std::max(std::abs(way.x()), std::abs(way.y()));
    last = at;
  }
  return count;
}

/// Of the painter, for the whole tile; none where bands would make it slower.
double stepsFor(const QPainterPath& path, const QTransform& toImage, const QRect& rect) {
  const double points = path.elementCount(), width = rect.width(), height = rect.height();
  if (points * (width + height) * width < kManySteps) return 0;
  const double count = touches(path, toImage, rect);
  const double steps = count * std::min(width, count / height);
  return steps > kStepsToAPoint * points * height / kMaxBandHeight ? steps : 0;
}

double stepsFor(const PaintContext& canvas, const QPainterPath& path) {
  const QRect rect = canvas.tile().rect();
  double steps = stepsFor(path, canvas.toImage(), rect);
  for (const QPainterPath& clip : canvas.clips()) steps += stepsFor(clip, {}, rect);
  return steps;
}

/// Shares the tile's pixels.
BitmapTile bandOf(BitmapTile* tile, int top, int height) {
  QImage& pixels = tile->pixels;
  return {
      QImage(pixels.scanLine(top), pixels.width(), height, pixels.bytesPerLine(), pixels.format()),
      tile->origin + QPoint(0, top)};
}

}  // namespace

void paintInBands(const PaintContext& canvas, const QPainterPath& path, const std::stop_token& stop,
                  const std::function<void(const PaintContext&)>& paint) {
  const double steps = stepsFor(canvas, path);
  if (!(steps > kManySteps)) return paint(canvas);
  const int height = canvas.tile().pixels.height();
  const int step = std::clamp(int(height * kManySteps / steps), 1, kMaxBandHeight);
  for (int top = 0; top < height && !stop.stop_requested(); top += step) {
    BitmapTile band = bandOf(&canvas.tile(), top, std::min(step, height - top));
    paint({&band, canvas.toImage(), canvas.clips()});
  }
}

}  // namespace kelvar::render
