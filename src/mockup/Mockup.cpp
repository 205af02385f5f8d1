#include "mockup/Mockup.h"

#include "platform/QtError.h"

namespace kelvar {

Result<ImageRef> Mockup::exportImage(const Arrangement& arrangement, const std::stop_token& stop) {
  const Drawing drawing = draw(arrangement, Purpose::Export, stop);
  if (!drawing.image) return drawing.image;
  for (const Arrangement::Shape& shape : arrangement.shapesOnArtboard()) {
    const auto problem = drawing.shapeProblems.constFind(shape.id);
    if (problem == drawing.shapeProblems.cend()) continue;
    return failure(Error::Kind::Unsupported,
                   QStringLiteral("\"%1\" cannot be shown: %2").arg(shape.name, *problem));
  }
  return drawing.image;
}

}  // namespace kelvar
