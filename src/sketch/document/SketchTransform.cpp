#include "sketch/document/SketchTransform.h"

namespace kelvar {

QTransform sketchTransform(const SketchJson& layer) {
  const QRectF frame = getRect(layer, "frame");
  const double x = frame.width() / 2, y = frame.height() / 2;
  QTransform transform = QTransform::fromTranslate(frame.x() + x, frame.y() + y);
  transform.scale(getBool(layer, "isFlippedHorizontal") ? -1 : 1,
                  getBool(layer, "isFlippedVertical") ? -1 : 1);
  transform.rotate(-getNumber(layer, "rotation"));
  return transform.translate(-x, -y);
}

}  // namespace kelvar
