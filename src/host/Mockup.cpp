#include "host/Mockup.h"

namespace kelvar {

ImageRef Mockup::exportPicture(const Arrangement& arrangement, QString* error,
                               const std::stop_token& stop) {
  const Drawing drawing = draw(arrangement, Purpose::Export, stop);
  *error = drawing.problem;
  if (!drawing.picture) return nullptr;
  for (const Arrangement::Shape& shape : arrangement.shapesInSight()) {
    if (!drawing.shapeProblems.contains(shape.id)) continue;
    *error = QStringLiteral("\"%1\" cannot be shown: %2")
                 .arg(shape.name, drawing.shapeProblems.value(shape.id));
    return nullptr;
  }
  return drawing.picture;
}

}  // namespace kelvar
