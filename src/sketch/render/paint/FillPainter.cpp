#include "sketch/render/paint/FillPainter.h"

#include <algorithm>
#include <cmath>
#include <random>

#include "sketch/render/paint/ColorAdjustment.h"
#include "sketch/render/paint/canCombine.h"

namespace kelvar::render {
namespace {

/// Where the image of a pattern lies that is laid over `box` as a whole.
QRectF patternRect(Paint::Pattern pattern, const QSizeF& image, const QRectF& box) {
  if (pattern == Paint::Pattern::Stretch) return box;
  const QSizeF size =
      image.scaled(box.size(), pattern == Paint::Pattern::Fit ? Qt::KeepAspectRatio
                                                              : Qt::KeepAspectRatioByExpanding);
  QRectF rect({0, 0}, size);
  rect.moveCenter(box.center());
  return rect;
}

QBrush imageBrush(const QImage& image, const QRectF& rect) {
  QBrush brush(image);
  brush.setTransform(QTransform(rect.width() / image.width(), 0, 0, rect.height() / image.height(),
                                rect.x(), rect.y()));
  return brush;
}

void paintPattern(QPainter* painter, const QPainterPath& path, const Paint& paint,
                  const QRectF& box, const QImage& image) {
  if (image.isNull() || box.isEmpty()) return;
  painter->setRenderHint(QPainter::SmoothPixmapTransform);
  if (paint.pattern == Paint::Pattern::Tile) {
    const double scale = paint.tileScale > 0.001 ? paint.tileScale : 1;
    const QRectF tile(box.topLeft(), QSizeF(image.size()) * scale);
    const QImage drawn =
        applyColorControls(shrunkFor(image, tile, painter->worldTransform()), paint.tones);
    painter->fillPath(path, imageBrush(drawn, tile));
    return;
  }
  const QRectF rect = patternRect(paint.pattern, image.size(), box);
  const QImage drawn =
      applyColorControls(shrunkFor(image, rect, painter->worldTransform()), paint.tones);
  if (paint.pattern != Paint::Pattern::Fit) {
    return painter->fillPath(path, imageBrush(drawn, rect));
  }
  QPainterPath frame;
  frame.addRect(rect);
  if (canCombine(path, frame)) {
    return painter->fillPath(path.intersected(frame), imageBrush(drawn, rect));
  }
  painter->save();
  painter->setClipPath(frame, Qt::IntersectClip);
  painter->fillPath(path, imageBrush(drawn, rect));
  painter->restore();
}

/// A tile of grains, the same ones each time.
QImage grains(const Paint& paint) {
  constexpr int kSide = 256;
  QImage tile(kSide, kSide, QImage::Format_ARGB32_Premultiplied);
  std::minstd_rand random(1);
  const auto part = [&random] { return int(random() >> 8 & 0xff); };
  for (int y = 0; y < kSide; ++y) {
    for (int x = 0; x < kSide; ++x) {
      const int gray = part();
      QColor grain(gray, gray, gray, 255);
      if (paint.noise == Paint::Noise::Black) grain = QColor(0, 0, 0, gray);
      if (paint.noise == Paint::Noise::White) grain = QColor(255, 255, 255, gray);
      if (paint.noise == Paint::Noise::Colored) grain = QColor(gray, part(), part());
      grain.setAlphaF(grain.alphaF() * float(paint.noiseIntensity));
      tile.setPixel(x, y, qPremultiply(grain.rgba()));
    }
  }
  return tile;
}

QColor between(const QColor& a, const QColor& b, double t) {
  const auto part = [t](float from, float to) { return float(from + (to - from) * t); };
  return QColor::fromRgbF(part(a.redF(), b.redF()), part(a.greenF(), b.greenF()),
                          part(a.blueF(), b.blueF()), part(a.alphaF(), b.alphaF()));
}

/// Stops at both ends, so that the colors run on across the seam when the last stop is not at
/// its end.
QList<GradientStop> closedAround(QList<GradientStop> stops) {
  const GradientStop first = stops.first(), last = stops.last();
  const double gap = 1 - last.position + first.position;
  if (!(gap > 0)) return stops;
  const QColor seam = between(last.color, first.color, (1 - last.position) / gap);
  stops.prepend({0, seam});
  stops.append({1, seam});
  return stops;
}

void setStops(const QList<GradientStop>& stops, bool isBackwards, QGradient* gradient) {
  QGradientStops list;
  double before = -1;
  for (const GradientStop& stop : stops) {
    // The painter keeps one of several stops at the same place; a hard edge needs two.
    const double position = std::min(1.0, std::max(stop.position, before + 1e-6));
    list.append({isBackwards ? 1 - position : position, stop.color});
    before = position;
  }
  if (isBackwards) std::reverse(list.begin(), list.end());
  gradient->setStops(list);
  gradient->setInterpolationMode(QGradient::ComponentInterpolation);
}

QPointF inBox(const QPointF& part, const QRectF& box) {
  return {box.x() + part.x() * box.width(), box.y() + part.y() * box.height()};
}

QBrush linearBrush(const Gradient& gradient, const QRectF& box) {
  QLinearGradient linear(inBox(gradient.from, box), inBox(gradient.to, box));
  setStops(gradient.stops, false, &linear);
  return linear;
}

QBrush radialBrush(const Gradient& gradient, const QRectF& box) {
  const QLineF axis(inBox(gradient.from, box), inBox(gradient.to, box));
  QRadialGradient radial({0, 0}, std::max(1e-6, axis.length()));
  setStops(gradient.stops, false, &radial);
  QBrush brush(radial);
  QTransform transform = QTransform::fromTranslate(axis.x1(), axis.y1());
  transform.rotate(-axis.angle());
  if (gradient.ellipse > 0) transform.scale(1, gradient.ellipse);
  brush.setTransform(transform);
  return brush;
}

/// Runs clockwise from three o'clock, and the painter's counter-clockwise.
QBrush angularBrush(const Gradient& gradient, const QRectF& box) {
  QConicalGradient conical(box.center(), 0);
  setStops(closedAround(gradient.stops), true, &conical);
  return conical;
}

}  // namespace

double scaleOf(const QTransform& transform) { return std::sqrt(std::abs(transform.determinant())); }

QImage shrunkFor(const QImage& image, const QRectF& target, const QTransform& toDevice) {
  const double across = std::hypot(toDevice.m11(), toDevice.m12()) * target.width();
  const double down = std::hypot(toDevice.m21(), toDevice.m22()) * target.height();
  const auto shrunk = [](double wanted, int present) {
    return wanted < present ? std::max(1, int(std::ceil(wanted - 1e-6))) : present;
  };
  const QSize size(shrunk(across, image.width()), shrunk(down, image.height()));
  if (size == image.size()) return image;
  QImage scaled = image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  scaled.convertTo(QImage::Format_ARGB32_Premultiplied);
  return scaled;
}

QBrush brushFor(const Paint& paint, const QRectF& box) {
  const Gradient& gradient = paint.gradient;
  if (paint.kind == Paint::Kind::Color) return paint.color;
  if (paint.kind != Paint::Kind::Gradient || gradient.stops.isEmpty()) return Qt::NoBrush;
  switch (gradient.kind) {
    case Gradient::Kind::Linear:
      return linearBrush(gradient, box);
    case Gradient::Kind::Radial:
      return radialBrush(gradient, box);
    case Gradient::Kind::Angular:
      return angularBrush(gradient, box);
  }
  return Qt::NoBrush;
}

void fillPath(QPainter* painter, const QPainterPath& path, const Paint& paint, const QRectF& box,
              const ImageRef& image) {
  if (paint.kind == Paint::Kind::Pattern) {
    if (image) paintPattern(painter, path, paint, box, image->pixels());
    return;
  }
  if (paint.kind == Paint::Kind::Noise) {
    painter->fillPath(path, QBrush(grains(paint)));
    return;
  }
  painter->fillPath(path, brushFor(paint, box));
}

}  // namespace kelvar::render
