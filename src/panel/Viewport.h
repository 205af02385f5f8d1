#pragma once

#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QTransform>

namespace kelvar::cli {

/// Which part of an image a view shows, and how large: maps pixels of the image to points of the
/// view.
class Viewport {
 public:
  /// Points around a fitted image.
  static constexpr double kMargin = 24;
  /// Points per pixel.
  static constexpr double kMaxZoom = 32;

  const QSizeF& viewSize() const { return view_; }
  /// Points.
  void setViewSize(const QSizeF& view);
  /// In pixels. If the size differs from the previous one, the image is fitted to the view.
  void setImageSize(const QSizeF& image);

  /// Points per pixel.
  double zoom() const { return zoom_; }
  bool isFitted() const { return isFitted_; }

  /// Shows the whole image, at most one point per pixel, also when the view is resized.
  void fit();
  /// Changes the zoom so that the point of the image at `at`, a point of the view, stays in place.
  void zoomTo(double zoom, const QPointF& at);
  void zoomBy(double factor, const QPointF& at) { zoomTo(zoom_ * factor, at); }
  void panBy(const QPointF& by);

  QPointF toView(const QPointF& point) const { return point * zoom_ + origin_; }
  QPointF toImage(const QPointF& point) const { return (point - origin_) / zoom_; }
  QTransform transform() const;
  QPointF center() const { return {view_.width() / 2, view_.height() / 2}; }

 private:
  double fittingZoom() const;
  void keepVisible();

  QSizeF view_{1, 1};
  QSizeF image_{1, 1};
  double zoom_ = 1;
  /// The image's top-left corner in the view.
  QPointF origin_;
  bool isFitted_ = true;
};

}  // namespace kelvar::cli
