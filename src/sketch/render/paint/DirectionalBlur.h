#pragma once

#include <QImage>
#include <QPointF>
#include <QRect>
#include <functional>
#include <stop_token>

namespace kelvar::render {

/// Blurs premultiplied pixels along lines: each pixel becomes the mean of those on a line through
/// its center, which extends by the vector `direction(center)` to both sides, but by at most
/// `longest` pixels. Pixels outside `needed` stay unchanged, as do those that are left when a stop
/// is requested.
void blurAlong(QImage* pixels, const QRect& needed, double longest,
               const std::function<QPointF(const QPointF&)>& direction,
               const std::stop_token& stop = {});

}  // namespace kelvar::render
