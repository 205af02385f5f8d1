#pragma once

#include <QPainter>

namespace kelvar::examples {

/// Mountains over a lake in the evening, filling `frame`.
void drawLandscape(QPainter& painter, const QRectF& frame);

}  // namespace kelvar::examples
