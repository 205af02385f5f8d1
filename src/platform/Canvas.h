#pragma once

#include <QColor>
#include <QList>
#include <QRectF>

#include "platform/Image.h"

namespace kelvar {

/// A drawing context on a transparent picture of its own, in points, the origin at the bottom
/// left and y up.
///
/// The picture has one pixel a point, a fractional size widened to whole pixels and the drawing
/// stretched by that fraction, so that what fills the canvas fills the picture. An empty or absurd
/// size gives a canvas without pixels, on which drawing does nothing.
class Canvas {
 public:
  enum class Operation { Copy, SourceOver };

  explicit Canvas(const QSizeF& size);

  void save() { saved_.append(shadow_); }
  void restore();

  /// Everything drawn from here on casts a shadow, until restored: its outline in `color`, moved
  /// by `offset` (a positive height moves it up) and blurred by a Gaussian whose standard deviation
  /// is half the blur radius.
  void setShadow(const QColor& color, double blurRadius, const QSizeF& offset);

  /// Draws the whole picture into `rect`, resampled at high quality: averaged where it shrinks,
  /// interpolated where it grows, with smooth edges. What is a whole number of pixels large is put
  /// at the nearest whole pixel, which keeps it sharp. `Copy` replaces what is there, alpha
  /// included.
  void drawImage(const Image& image, const QRectF& rect, Operation operation);

  /// What has been drawn, of the canvas's size.
  Image image() const { return Image(pixels_, size_); }
  const QImage& pixels() const { return pixels_; }

 private:
  struct Shadow {
    QColor color = Qt::transparent;
    double blurRadius = 0;
    QSizeF offset{0, 0};
  };

  QRectF deviceRect(const QRectF& rect) const;
  void drawShadow(const Image& image, const QRectF& target);

  QImage pixels_;
  QSizeF size_;
  Shadow shadow_;
  QList<Shadow> saved_;
};

}  // namespace kelvar
