#pragma once

#include <QImage>
#include <QPointF>
#include <QRect>
#include <functional>
#include <stop_token>

namespace kelvar::render {

/// Smears premultiplied pixels: each becomes the mean of those on a line through it, which runs as
/// far as `streakAt` says for its middle, forth and back, at most `longest` pixels either way.
/// Pixels outside `needed` stay as they are, and so do the rest once it is to stop.
void smear(QImage* pixels, const QRect& needed, double longest,
           const std::function<QPointF(const QPointF&)>& streakAt,
           const std::stop_token& stop = {});

}  // namespace kelvar::render
