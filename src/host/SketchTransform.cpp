#include "host/SketchTransform.h"

namespace kelvar {

QTransform sketchTransform(const SketchJson& layer) {
  const QRectF frame = rectIn(layer, "frame");
  const double x = frame.width() / 2, y = frame.height() / 2;
  QTransform transform = QTransform::fromTranslate(frame.x() + x, frame.y() + y);
  transform.scale(flagIn(layer, "isFlippedHorizontal") ? -1 : 1,
                  flagIn(layer, "isFlippedVertical") ? -1 : 1);
  transform.rotate(-numberIn(layer, "rotation"));
  return transform.translate(-x, -y);
}

}  // namespace kelvar
