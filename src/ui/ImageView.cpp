#include "ui/ImageView.h"

#include <QPainter>

namespace kelvar {

ImageView::ImageView(QWidget* parent) : QWidget(parent) {}

void ImageView::setImage(ImageRef image) {
  image_ = std::move(image);
  scaled_ = QPixmap();
  update();
}

void ImageView::paintEvent(QPaintEvent*) {
  if (!image_ || !image_->isValid() || image_->size().isEmpty()) return;
  QPainter painter(this);
  QSizeF points = image_->size();
  if (points.width() > width() || points.height() > height()) {
    points.scale(QSizeF(size()), Qt::KeepAspectRatio);
  }
  const double pixelsPerPoint = painter.deviceTransform().m11();
  const QSize pixels = (points * pixelsPerPoint).toSize().expandedTo({1, 1});
  if (scaled_.size() != pixels) {
    scaled_ = QPixmap::fromImage(
        image_->pixels().scaled(pixels, Qt::IgnoreAspectRatio, Qt::SmoothTransformation));
  }
  // On whole pixels, to keep the image sharp.
  const QPointF corner((width() * pixelsPerPoint - pixels.width()) / 2,
                       (height() * pixelsPerPoint - pixels.height()) / 2);
  painter.drawPixmap(
      QRectF(QPointF(corner.toPoint()) / pixelsPerPoint, QSizeF(pixels) / pixelsPerPoint), scaled_,
      QRectF({0, 0}, QSizeF(pixels)));
}

}  // namespace kelvar
