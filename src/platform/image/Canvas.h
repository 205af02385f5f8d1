#pragma once

#include <QColor>
#include <QList>
#include <QPainterPath>
#include <QRectF>
#include <functional>

#include "platform/image/Image.h"

namespace kelvar {

/// A drawing context on a new transparent image, in points, with the origin at the bottom left and
/// y up.
///
/// The image has one pixel per point by default. A fractional size is rounded up to whole pixels
/// and the drawing stretched accordingly, so that a drawing that fills the canvas fills the image.
/// An empty size, or one beyond the image limits, results in a canvas without pixels, on which
/// drawing does nothing.
class KELVAR_EXPORT Canvas {
 public:
  enum class Operation { Copy, SourceOver };

  explicit Canvas(const QSizeF& size, double pixelsPerPoint = 1);

  /// Saves the colors and the shadow.
  void save() { saved_.append(state_); }
  void restore();

  /// Black by default.
  void setFillColor(const QColor& color) { state_.fill = color; }
  void setStrokeColor(const QColor& color) { state_.stroke = color; }

  /// Everything drawn until the state is restored casts a shadow: its outline in `color`, offset by
  /// `offset` (a positive height moves it up) and blurred by a Gaussian whose standard deviation is
  /// half the blur radius.
  void setShadow(const QColor& color, double blurRadius, const QSizeF& offset);

  /// Draws the whole image into `rect`, resampled at high quality: averaged when it shrinks,
  /// interpolated when it grows, with smooth edges. If `rect` is a whole number of pixels wide and
  /// high, it is moved to the nearest whole pixel, which keeps the image sharp. `Copy` replaces the
  /// destination, alpha included.
  void drawImage(const Image& image, const QRectF& rect, Operation operation);

  void fillRect(const QRectF& rect);
  /// Strokes the edge of `rect` with a centered line of this width in points and sharp corners.
  void strokeRect(const QRectF& rect, double lineWidth);

  /// The drawing, with the canvas's size.
  Image image() const { return Image(pixels_, size_); }
  const QImage& pixels() const { return pixels_; }

 private:
  struct Shadow {
    QColor color = Qt::transparent;
    double blurRadius = 0;
    QSizeF offset{0, 0};
  };
  struct State {
    QColor fill = Qt::black;
    QColor stroke = Qt::black;
    Shadow shadow;
  };
  /// Draws onto an image, offset by `moved` pixels.
  using Paint = std::function<void(QImage& onto, const QPointF& moved)>;

  QRectF deviceRect(const QRectF& rect) const;
  void fillPath(const QPainterPath& path, const QColor& color);
  void drawShadow(const Paint& paint);

  QImage pixels_;
  QSizeF size_;
  double pixelsPerPoint_ = 1;
  State state_;
  QList<State> saved_;
};

}  // namespace kelvar
