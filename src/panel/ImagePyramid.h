#pragma once

#include <QImage>
#include <QList>
#include <QPainter>

namespace kelvar::cli {

/// An image with its mipmap levels, so that it is painted quickly and without aliasing at any size.
class ImagePyramid {
 public:
  ImagePyramid() = default;
  /// Takes several milliseconds for a photo: construct it on a worker thread.
  explicit ImagePyramid(const QImage& image);

  bool isNull() const { return levels_.isEmpty(); }
  QSize size() const { return isNull() ? QSize() : levels_.first().size(); }

  /// Paints the part within `clip`. `transform` maps pixels to the painter's points; it only scales
  /// and translates.
  void paint(QPainter* painter, const QTransform& transform, const QRectF& clip) const;

  /// `image` itself, or scaled down so that no side is longer than `side` pixels.
  static QImage within(const QImage& image, int side);

  /// The part `rect` of the image, scaled down to fit into `size`.
  QImage part(const QRect& rect, const QSize& size) const;

 private:
  /// The smallest level that is not magnified at `scale`.
  qsizetype levelFor(double scale) const;

  QList<QImage> levels_;
};

}  // namespace kelvar::cli
