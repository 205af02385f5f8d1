#include "platform/Canvas.h"

#include <QPainter>
#include <algorithm>
#include <cmath>
#include <vector>

#include "platform/ImageFile.h"
#include "platform/PixelGrid.h"

namespace kelvar {
namespace {

/// Draws the whole picture into `target`, in pixels, y down.
void paint(QImage& onto, const QImage& picture, const QRectF& target,
           QPainter::CompositionMode mode) {
  const double width = ceilToPixel(target.width()), height = ceilToPixel(target.height());
  if (picture.isNull() || !isHoldable(width, height)) return;
  // The painter interpolates between neighbours only, which aliases where a picture shrinks.
  const QSize size{int(width), int(height)};
  const QImage scaled = picture.size() == size
                            ? picture
                            : picture.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  QPainter painter(&onto);
  painter.setCompositionMode(mode);
  painter.setRenderHints(QPainter::SmoothPixmapTransform | QPainter::Antialiasing);
  painter.drawImage(target, scaled);
}

/// Pixels. Wider blurs look much the same and take ever longer.
constexpr double kMaxDeviation = 100;

std::vector<float> gaussian(double wanted) {
  const double deviation = wanted > 0 ? std::min(wanted, kMaxDeviation) : 0;
  const int radius = int(std::ceil(3 * deviation));
  std::vector<float> weights;
  float sum = 0;
  for (int i = -radius; i <= radius; ++i) {
    weights.push_back(deviation > 0 ? float(std::exp(-0.5 * i * i / (deviation * deviation))) : 1);
    sum += weights.back();
  }
  for (float& weight : weights) weight /= sum;
  return weights;
}

/// Blurs one channel along rows and writes the result transposed; twice makes a full blur. Outside
/// is empty.
std::vector<float> blurredRowsTransposed(const std::vector<float>& from, int width, int height,
                                         const std::vector<float>& weights) {
  const int radius = int(weights.size()) / 2;
  std::vector<float> to(from.size());
  std::vector<float> sums(width);
  for (int y = 0; y < height; ++y) {
    const float* const row = from.data() + size_t(y) * width;
    if (std::all_of(row, row + width, [](float each) { return each == 0; })) continue;
    std::fill(sums.begin(), sums.end(), 0.0F);
    // By weight and not by pixel, which the compiler turns into vector instructions.
    for (int offset = -radius; offset <= radius; ++offset) {
      const float weight = weights[offset + radius];
      const int last = std::min(width, width - offset);
      for (int x = std::max(0, -offset); x < last; ++x) sums[x] += row[x + offset] * weight;
    }
    for (int x = 0; x < width; ++x) to[size_t(x) * height + y] = sums[x];
  }
  return to;
}

/// The picture's alpha, blurred and coloured.
QImage shadowOf(const QImage& layer, const QColor& color, const std::vector<float>& weights) {
  const int width = layer.width(), height = layer.height();
  std::vector<float> alpha(size_t(width) * height);
  for (int y = 0; y < height; ++y) {
    const auto* row = reinterpret_cast<const QRgb*>(layer.constScanLine(y));
    for (int x = 0; x < width; ++x) alpha[size_t(y) * width + x] = float(qAlpha(row[x]));
  }
  alpha = blurredRowsTransposed(alpha, width, height, weights);
  alpha = blurredRowsTransposed(alpha, height, width, weights);
  QImage shadow(width, height, QImage::Format_ARGB32_Premultiplied);
  for (int y = 0; y < height; ++y) {
    auto* row = reinterpret_cast<QRgb*>(shadow.scanLine(y));
    for (int x = 0; x < width; ++x) {
      const float a = alpha[size_t(y) * width + x] * color.alphaF();
      row[x] = qPremultiply(qRgba(color.red(), color.green(), color.blue(), int(std::lround(a))));
    }
  }
  return shadow;
}

}  // namespace

Canvas::Canvas(const QSizeF& size, double pixelsPerPoint)
    : size_(size), pixelsPerPoint_(pixelsPerPoint) {
  const double width = ceilToPixel(size.width() * pixelsPerPoint);
  const double height = ceilToPixel(size.height() * pixelsPerPoint);
  if (!isHoldable(width, height)) return;
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
  const std::vector<float> weights = gaussian(blurRadius * pixelsPerPoint_ / 2);
  // What lies up to the blur's reach outside of the canvas still darkens it.
  const int margin = int(weights.size()) / 2;
  QImage layer(pixels_.size() + QSize(2 * margin, 2 * margin), QImage::Format_ARGB32_Premultiplied);
  if (layer.isNull()) return;
  layer.fill(Qt::transparent);
  paint(layer,
        {margin + offset.width() * pixelsPerPoint_, margin - offset.height() * pixelsPerPoint_});
  QPainter painter(&pixels_);
  painter.drawImage(-margin, -margin, shadowOf(layer, color, weights));
}

}  // namespace kelvar
