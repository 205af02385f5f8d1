#pragma once

#include <QImage>
#include <QPolygonF>

namespace kelvar::examples {

/// Where the phone's screen is in the photo, `scale` 1: top-left, top-right, bottom-right,
/// bottom-left of the screen, in pixels.
QPolygonF photoScreenCorners();

/// The photo of a phone on a desk. `scale` makes it smaller for a preview; `samples` is the number
/// of paths per pixel.
QImage drawPhoto(double scale, int samples);

}  // namespace kelvar::examples
