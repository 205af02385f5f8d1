#include "panel/Viewport.h"

#include <algorithm>

namespace kelvar::cli {

void Viewport::setViewSize(const QSizeF& view) {
  view_ = view;
  if (isFitted_) return fit();
  keepVisible();
}

void Viewport::setImageSize(const QSizeF& image) {
  if (image == image_) return;
  image_ = image;
  fit();
}

double Viewport::fittingZoom() const {
  const double width = std::max(view_.width() - 2 * kMargin, 16.0);
  const double height = std::max(view_.height() - 2 * kMargin, 16.0);
  return std::min({width / image_.width(), height / image_.height(), 1.0});
}

void Viewport::fit() {
  zoom_ = fittingZoom();
  origin_ = center() - QPointF(image_.width(), image_.height()) * zoom_ / 2;
  isFitted_ = true;
}

void Viewport::zoomTo(double zoom, const QPointF& at) {
  const QPointF fixed = toImage(at);
  zoom_ = std::clamp(zoom, std::min(fittingZoom(), 0.5) / 2, kMaxZoom);
  origin_ = at - fixed * zoom_;
  isFitted_ = false;
  keepVisible();
}

void Viewport::panBy(const QPointF& by) {
  origin_ += by;
  isFitted_ = false;
  keepVisible();
}

QTransform Viewport::transform() const {
  return QTransform::fromTranslate(origin_.x(), origin_.y()).scale(zoom_, zoom_);
}

/// At least a corner of the image stays in the view.
void Viewport::keepVisible() {
  constexpr double kMinVisible = 48;
  const QSizeF size = image_ * zoom_;
  const auto clamp = [](double at, double size, double view) {
    return std::clamp(at, std::min(kMinVisible - size, 0.0), std::max(view - kMinVisible, 0.0));
  };
  origin_ = {clamp(origin_.x(), size.width(), view_.width()),
             clamp(origin_.y(), size.height(), view_.height())};
}

}  // namespace kelvar::cli
