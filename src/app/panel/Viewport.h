#pragma once

#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QTransform>

namespace kelvar::app {

/// Which part of a picture a view shows, and how large: the picture's pixels to the view's points.
class Viewport {
 public:
  /// Left free around a picture that is fitted.
  static constexpr double kMargin = 24;
  /// Points a pixel, at most.
  static constexpr double kMostZoom = 32;

  void setView(const QSizeF& view);
  void setPicture(const QSizeF& picture);

  /// Points a pixel.
  double zoom() const { return zoom_; }
  bool isFitted() const { return isFitted_; }

  /// All of the picture, no larger than its pixels; stays so when the view's size changes.
  void fit();
  /// `at`, in the view, stays where it is.
  void zoomTo(double zoom, const QPointF& at);
  void zoomBy(double factor, const QPointF& at) { zoomTo(zoom_ * factor, at); }
  void panBy(const QPointF& by);

  QPointF toView(const QPointF& point) const { return point * zoom_ + origin_; }
  QPointF toPicture(const QPointF& point) const { return (point - origin_) / zoom_; }
  QTransform transform() const;
  QPointF middle() const { return {view_.width() / 2, view_.height() / 2}; }

 private:
  double fittingZoom() const;
  void keepInSight();

  QSizeF view_{1, 1};
  QSizeF picture_{1, 1};
  double zoom_ = 1;
  /// Where the picture's top-left corner lies in the view.
  QPointF origin_;
  bool isFitted_ = true;
};

}  // namespace kelvar::app
