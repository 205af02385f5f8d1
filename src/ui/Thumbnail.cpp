#include "ui/Thumbnail.h"

#include <QPainter>
#include <QPixmapCache>

namespace kelvar {
namespace {

constexpr int kPixelsPerPoint = 2;

/// A pixmap of that size, with the image centered in it.
QPixmap fitted(const QImage& image, const QSize& size) {
  const QImage scaled = image.scaled(image.size().scaled(size, Qt::KeepAspectRatio),
                                     Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
  QPixmap pixmap(size);
  pixmap.fill(Qt::transparent);
  QPainter painter(&pixmap);
  painter.drawImage((size.width() - scaled.width()) / 2, (size.height() - scaled.height()) / 2,
                    scaled);
  return pixmap;
}

}  // namespace

QIcon thumbnail(const ImageRef& image, const QSize& size) {
  if (!image || !image->isValid()) return {};
  const QSize pixels = size * kPixelsPerPoint;
  const QString key = QStringLiteral("kelvar-%1-%2x%3")
                          .arg(image->pixels().cacheKey())
                          .arg(pixels.width())
                          .arg(pixels.height());
  QPixmap pixmap;
  if (!QPixmapCache::find(key, &pixmap)) {
    pixmap = fitted(image->pixels(), pixels);
    pixmap.setDevicePixelRatio(kPixelsPerPoint);
    QPixmapCache::insert(key, pixmap);
  }
  return QIcon(pixmap);
}

}  // namespace kelvar
