#include "platform/image/Canvas.h"

#include <QPainter>
#include <algorithm>
#include <cmath>

#include "pixels/PixelBuffer.h"
#include "pixels/filter/GaussianBlur.h"
#include "platform/image/ImageFile.h"
#include "platform/image/PixelSnapping.h"

namespace kelvar {
namespace {

/// Draws the whole image into `target`, in pixels, y down.
void paint(QImage& onto, const QImage& image, const QRectF& target,
           QPainter::CompositionMode mode) {
  const double width = ceilToPixel(target.width()), height = ceilToPixel(target.height());
  if (image.isNull() || !fitsImageLimits(width, height)) return;
  // The painter interpolates between neighbors only, which aliases when an image shrinks.
  const QSize size{int(width), int(height)};
  const QImage scaled = image.size() == size
                            ? image
                            : image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  QPainter painter(&onto);
  painter.setCompositionMode(mode);
  painter.setRenderHints(QPainter::SmoothPixmapTransform | QPainter::Antialiasing);
  painter.drawImage(target, scaled);
}

/// In pixels. Wider blurs look much the same and take much longer.
constexpr double kMaxSigma = 100;

constexpr PixelFormat kFloatMask{1, ComponentType::Float32, AlphaKind::None};

/// The image's alpha, blurred and colored. Blurred as floats, so that it is rounded only once.
/// Empty when there is no memory for it.
QImage shadowOf(const QImage& layer, const QColor& color, double sigma) {
  auto mask = PixelBuffer::create(layer.width(), layer.height(), kFloatMask);
  if (!mask) return {};
  const auto alphas = [&](int y) { return reinterpret_cast<float*>(mask->row(y)); };
  for (int y = 0; y < layer.height(); ++y) {
    const auto* const row = reinterpret_cast<const QRgb*>(layer.constScanLine(y));
    std::transform(row, row + layer.width(), alphas(y), [](QRgb p) { return float(qAlpha(p)); });
  }
  blur(mask->view(), sigma);
  QImage shadow(layer.size(), QImage::Format_ARGB32_Premultiplied);
  for (int y = 0; y < shadow.height(); ++y) {
    auto* const row = reinterpret_cast<QRgb*>(shadow.scanLine(y));
    std::transform(alphas(y), alphas(y) + shadow.width(), row, [&](float alpha) {
      const auto a = int(std::lround(alpha * color.alphaF()));
      return qPremultiply(qRgba(color.red(), color.green(), color.blue(), a));
    });
  }
  return shadow;
}

}  // namespace

Canvas::Canvas(const QSizeF& size, double pixelsPerPoint)
    : size_(size), pixelsPerPoint_(pixelsPerPoint) {
  const double width = ceilToPixel(size.width() * pixelsPerPoint);
  const double height = ceilToPixel(size.height() * pixelsPerPoint);
  if (!fitsImageLimits(width, height)) return;
  pixels_ = QImage(int(width), int(height), QImage::Format_ARGB32_Premultiplied);
  pixels_.fill(Qt::transparent);
}

void Canvas::restore() {
  if (!saved_.isEmpty()) state_ = saved_.takeLast();
}

void Canvas::setShadow(const QColor& color, double blurRadius, const QSizeF& offset) {
  state_.shadow = {color, blurRadius, offset};
}

void Canvas::drawImage(const Image& image, const QRectF& rect, Operation operation) {
  if (pixels_.isNull() || !image.isValid()) return;
  const QRectF target = deviceRect(rect);
  drawShadow([&](QImage& onto, const QPointF& moved) {
    paint(onto, image.pixels(), target.translated(moved), QPainter::CompositionMode_Source);
  });
  paint(pixels_, image.pixels(), target,
        operation == Operation::Copy ? QPainter::CompositionMode_Source
                                     : QPainter::CompositionMode_SourceOver);
}

void Canvas::fillRect(const QRectF& rect) {
  QPainterPath path;
  path.addRect(deviceRect(rect));
  fillPath(path, state_.fill);
}

void Canvas::strokeRect(const QRectF& rect, double lineWidth) {
  const double half = lineWidth / 2;
  QPainterPath path;
  path.addRect(deviceRect(rect.adjusted(-half, -half, half, half)));
  const QRectF inside = rect.adjusted(half, half, -half, -half);
  if (inside.width() > 0 && inside.height() > 0) path.addRect(deviceRect(inside));
  fillPath(path, state_.stroke);
}

void Canvas::fillPath(const QPainterPath& path, const QColor& color) {
  if (pixels_.isNull()) return;
  const Paint fill = [&](QImage& onto, const QPointF& moved) {
    QPainter painter(&onto);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(path.translated(moved), color);
  };
  drawShadow(fill);
  fill(pixels_, {0, 0});
}

QRectF Canvas::deviceRect(const QRectF& rect) const {
  const double sx = pixels_.width() / size_.width(), sy = pixels_.height() / size_.height();
  return {rect.x() * sx, (size_.height() - rect.y() - rect.height()) * sy, rect.width() * sx,
          rect.height() * sy};
}

void Canvas::drawShadow(const Paint& paint) {
  const auto& [color, blurRadius, offset] = state_.shadow;
  if (color.alpha() == 0) return;
  const double sigma = blurRadius * pixelsPerPoint_ / 2;
  const double bounded = sigma > 0 ? std::min(sigma, kMaxSigma) : 0;
  // Parts outside of the canvas, but within reach of the blur, still darken it.
  const int margin = blurReach(bounded);
  QImage layer(pixels_.size() + QSize(2 * margin, 2 * margin), QImage::Format_ARGB32_Premultiplied);
  if (layer.isNull()) return;
  layer.fill(Qt::transparent);
  paint(layer,
        {margin + offset.width() * pixelsPerPoint_, margin - offset.height() * pixelsPerPoint_});
  QPainter painter(&pixels_);
  painter.drawImage(-margin, -margin, shadowOf(layer, color, bounded));
}

}  // namespace kelvar
