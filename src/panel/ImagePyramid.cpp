#include "panel/ImagePyramid.h"

#include <algorithm>

namespace kelvar::cli {
namespace {

constexpr int kMinSide = 256;

/// Screen pixels per pixel from which on single pixels are shown as squares.
constexpr double kMinSquareZoom = 3;

QRectF mapped(const QRectF& rect, double x, double y) {
  return {rect.x() * x, rect.y() * y, rect.width() * x, rect.height() * y};
}

}  // namespace

ImagePyramid::ImagePyramid(const QImage& image) {
  if (image.isNull()) return;
  levels_.append(image);
  while (std::max(levels_.back().width(), levels_.back().height()) > kMinSide) {
    const QSize half(std::max(levels_.back().width() / 2, 1),
                     std::max(levels_.back().height() / 2, 1));
    levels_.append(levels_.back().scaled(half, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
  }
}

qsizetype ImagePyramid::levelFor(double scale) const {
  qsizetype level = 0;
  while (level + 1 < levels_.size() && scale <= 0.5) {
    scale *= 2;
    ++level;
  }
  return level;
}

void ImagePyramid::paint(QPainter* painter, const QTransform& transform, const QRectF& clip) const {
  if (isNull()) return;
  const QRectF whole(QPointF(0, 0), QSizeF(size()));
  const QRect wanted = transform.inverted().mapRect(clip).intersected(whole).toAlignedRect();
  const QRectF part = QRectF(wanted).intersected(whole);
  if (part.isEmpty()) return;
  const double scale = transform.m11() * painter->device()->devicePixelRatioF();
  const QImage& level = levels_[levelFor(scale)];
  const QRectF source =
      mapped(part, level.width() / whole.width(), level.height() / whole.height());
  painter->setRenderHint(QPainter::SmoothPixmapTransform, scale < kMinSquareZoom);
  painter->drawImage(transform.mapRect(part), level, source);
}

QImage ImagePyramid::within(const QImage& image, int side) {
  if (std::max(image.width(), image.height()) <= side) return image;
  return image.scaled(side, side, Qt::KeepAspectRatio, Qt::SmoothTransformation);
}

QImage ImagePyramid::part(const QRect& rect, const QSize& size) const {
  const QRect part = rect.intersected(QRect(QPoint(0, 0), this->size()));
  if (part.isEmpty()) return {};
  const QSize target = part.size().scaled(size, Qt::KeepAspectRatio);
  const double scale = double(target.width()) / part.width();
  const QImage& level = levels_[levelFor(scale)];
  const QRect source = mapped(part, double(level.width()) / this->size().width(),
                              double(level.height()) / this->size().height())
                           .toAlignedRect()
                           .intersected(level.rect());
  const QImage cut = level.copy(source);
  if (scale >= 1) return cut;
  return cut.scaled(target, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

}  // namespace kelvar::cli
