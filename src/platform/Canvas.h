#pragma once

#include <QColor>
#include <QList>
#include <QPainterPath>
#include <QRectF>
#include <functional>

#include "platform/Image.h"

namespace kelvar {

/// A drawing context on a transparent picture of its own, in points, the origin at the bottom
/// left and y up.
///
/// The picture has one pixel a point unless asked for more, a fractional size widened to whole
/// pixels and the drawing stretched by that fraction, so that what fills the canvas fills the
/// picture. An empty or absurd size gives a canvas without pixels, on which drawing does nothing.
class KELVAR_EXPORT Canvas {
 public:
  enum class Operation { Copy, SourceOver };

  explicit Canvas(const QSizeF& size, double pixelsPerPoint = 1);

  /// Colours and shadow.
  void save() { saved_.append(state_); }
  void restore();

  /// Black at first.
  void setFillColor(const QColor& color) { state_.fill = color; }
  void setStrokeColor(const QColor& color) { state_.stroke = color; }

  /// Everything drawn from here on casts a shadow, until restored: its outline in `color`, moved
  /// by `offset` (a positive height moves it up) and blurred by a Gaussian whose standard deviation
  /// is half the blur radius.
  void setShadow(const QColor& color, double blurRadius, const QSizeF& offset);

  /// Draws the whole picture into `rect`, resampled at high quality: averaged where it shrinks,
  /// interpolated where it grows, with smooth edges. What is a whole number of pixels large is put
  /// at the nearest whole pixel, which keeps it sharp. `Copy` replaces what is there, alpha
  /// included.
  void drawImage(const Image& image, const QRectF& rect, Operation operation);

  void fillRect(const QRectF& rect);
  /// A line of this width in points, centred on the edge of `rect`, with sharp corners.
  void strokeRect(const QRectF& rect, double lineWidth);

  /// What has been drawn, of the canvas's size.
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
  /// Draws onto a picture, moved by so many pixels.
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
