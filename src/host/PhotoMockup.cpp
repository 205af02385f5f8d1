#include "host/PhotoMockup.h"

#include "host/ArtboardRenderer.h"
#include "host/cornersObjection.h"

namespace kelvar {

Mockup::Drawing PhotoMockup::makeDrawing(const Arrangement& arrangement, Purpose,
                                         const std::stop_token& stop) {
  Drawing drawing;
  const ImageRef photo = kept_.read(arrangement.photo, {}, &drawing.problem);
  if (!photo) return drawing;
  QImage pixels = photo->pixels();
  for (const Arrangement::Shape& shape : arrangement.shapes) {
    if (stop.stop_requested()) return {nullptr, kDrawingStopped, {}};
    if (shape.design.isEmpty() || !shape.included) continue;
    drawShape(arrangement, shape, &pixels, &drawing);
  }
  if (stop.stop_requested()) return {nullptr, kDrawingStopped, {}};
  drawing.picture = std::make_shared<Image>(pixels, photo->size());
  return drawing;
}

void PhotoMockup::drawShape(const Arrangement& arrangement, const Arrangement::Shape& shape,
                            QImage* pixels, Drawing* drawing) {
  const auto complain = [&](const QString& problem) {
    if (!problem.isEmpty()) drawing->shapeProblems.insert(shape.id, problem);
  };
  const QString objection = cornersObjection(shape.corners, {});
  if (!objection.isEmpty()) return complain(objection);
  const Arrangement::Design* design = arrangement.design(shape.design);
  if (!design) return complain(QStringLiteral("its design is not in the arrangement"));
  const Mapping mapping = shape.mapping();
  QString problem;
  ImageRef picture = kept_.read(design->file, mapping.vectorSizeOnPhoto(), &problem);
  complain(problem);
  if (!picture) picture = kept_.last(design->file);
  if (picture && !mapping.layInto(pixels, picture)) {
    complain(QStringLiteral("its corners are too close to a line, or there is too little memory"));
  }
}

ImageRef PhotoMockup::makeDesignPicture(const Arrangement::Design& design, int, QString* error,
                                        const std::stop_token&) {
  return kept_.read(design.file, {}, error);
}

void PhotoMockup::refresh(const Arrangement::Design& design) { kept_.forget(design.file); }

bool PhotoMockup::save(const Arrangement& arrangement, const QString& path, QString* error) {
  return arrangement.write(path, error);
}

}  // namespace kelvar
