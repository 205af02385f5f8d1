#pragma once

#include <QImage>
#include <QPointF>
#include <functional>

namespace kelvar::render {

/// Smears premultiplied pixels: each becomes the mean of those on a line through it, which runs as
/// far as `streakAt` says for its middle, forth and back. At most `longest` pixels either way.
void smear(QImage* pixels, double longest, const std::function<QPointF(const QPointF&)>& streakAt);

}  // namespace kelvar::render
