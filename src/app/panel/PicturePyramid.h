#pragma once

#include <QImage>
#include <QList>
#include <QPainter>

namespace kelvar::app {

/// A picture with smaller copies of itself, so that it is painted quickly and cleanly at any size.
class PicturePyramid {
 public:
  PicturePyramid() = default;
  /// Takes some milliseconds for a photo: best on a thread of its own.
  explicit PicturePyramid(const QImage& picture);

  bool isNull() const { return levels_.isEmpty(); }
  QSize size() const { return isNull() ? QSize() : levels_.first().size(); }

  /// The part of the picture that lies in `clip`, as `transform` (scaling and moving alone) carries
  /// pixels to the painter's points.
  void paint(QPainter* painter, const QTransform& transform, const QRectF& clip) const;

  /// `picture` itself, or smaller so that no side is longer than `side` pixels.
  static QImage within(const QImage& picture, int side);

  /// That part of the picture, as large as fits into `size`.
  QImage part(const QRect& rect, const QSize& size) const;

 private:
  /// The smallest copy that need not be magnified at `scale`, and its number.
  qsizetype levelFor(double scale) const;

  QList<QImage> levels_;
};

}  // namespace kelvar::app
