#include "app/panel/Viewport.h"

#include <algorithm>

namespace kelvar::app {

void Viewport::setView(const QSizeF& view) {
  view_ = view;
  if (isFitted_) return fit();
  keepInSight();
}

void Viewport::setPicture(const QSizeF& picture) {
  if (picture == picture_) return;
  picture_ = picture;
  fit();
}

double Viewport::fittingZoom() const {
  const double width = std::max(view_.width() - 2 * kMargin, 16.0);
  const double height = std::max(view_.height() - 2 * kMargin, 16.0);
  return std::min({width / picture_.width(), height / picture_.height(), 1.0});
}

void Viewport::fit() {
  zoom_ = fittingZoom();
  origin_ = middle() - QPointF(picture_.width(), picture_.height()) * zoom_ / 2;
  isFitted_ = true;
}

void Viewport::zoomTo(double zoom, const QPointF& at) {
  const QPointF fixed = toPicture(at);
  zoom_ = std::clamp(zoom, std::min(fittingZoom(), 0.5) / 2, kMostZoom);
  origin_ = at - fixed * zoom_;
  isFitted_ = false;
  keepInSight();
}

void Viewport::panBy(const QPointF& by) {
  origin_ += by;
  isFitted_ = false;
  keepInSight();
}

QTransform Viewport::transform() const {
  return QTransform::fromTranslate(origin_.x(), origin_.y()).scale(zoom_, zoom_);
}

/// At least a corner of the picture stays in the view.
void Viewport::keepInSight() {
  constexpr double kLeast = 48;
  const QSizeF size = picture_ * zoom_;
  const auto clamp = [](double at, double size, double view) {
    return std::clamp(at, std::min(kLeast - size, 0.0), std::max(view - kLeast, 0.0));
  };
  origin_ = {clamp(origin_.x(), size.width(), view_.width()),
             clamp(origin_.y(), size.height(), view_.height())};
}

}  // namespace kelvar::app
