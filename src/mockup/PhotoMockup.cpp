#include "mockup/PhotoMockup.h"

#include "platform/QtError.h"
#include "scene/validateQuad.h"
#include "sketch/render/ArtboardRenderer.h"

namespace kelvar {

Mockup::Drawing PhotoMockup::makeDrawing(const Arrangement& arrangement, Purpose,
                                         const std::stop_token& stop) {
  const auto stopped = [] {
    return Drawing{failure(Error::Kind::Stopped, QString(kDrawingStopped))};
  };
  const Result<ImageRef> photo = files_.read(arrangement.photo, {});
  if (!photo) return {photo};
  Drawing drawing;
  QImage pixels = (*photo)->pixels();
  for (const Arrangement::Shape& shape : arrangement.shapes) {
    if (stop.stop_requested()) return stopped();
    if (shape.design.isEmpty() || !shape.options.includedInArtboards) continue;
    const Result<void> drawn = drawShape(arrangement, shape, &pixels);
    if (!drawn) drawing.shapeProblems.insert(shape.id, messageOf(drawn.error()));
  }
  if (stop.stop_requested()) return stopped();
  drawing.image = std::make_shared<Image>(pixels, (*photo)->size());
  return drawing;
}

Result<void> PhotoMockup::drawShape(const Arrangement& arrangement, const Arrangement::Shape& shape,
                                    QImage* pixels) {
  const Result<void> valid = validateQuad(quadFrom(shape.corners));
  if (!valid) return failure(Error::Kind::Unsupported, messageOf(valid.error()));
  const Arrangement::Design* design = arrangement.design(shape.design);
  if (!design) {
    return failure(Error::Kind::NotFound, QStringLiteral("its design is not in the arrangement"));
  }
  const Mapping mapping = shape.mapping();
  const Result<ImageRef> read = files_.read(design->file, mapping.rasterizationSizeOnPhoto());
  if (const ImageRef image = read ? *read : files_.lastRead(design->file)) {
    const Result<void> composited = mapping.compositeInto(pixels, image);
    if (!composited) return composited;
  }
  if (!read) return tl::unexpected(read.error());
  return {};
}

Result<ImageRef> PhotoMockup::makeDesignImage(const Arrangement::Design& design, int,
                                              const std::stop_token&) {
  return files_.read(design.file, {});
}

void PhotoMockup::refresh(const Arrangement::Design& design) { files_.invalidate(design.file); }

Result<void> PhotoMockup::save(const Arrangement& arrangement, const QString& path) {
  return arrangement.write(path);
}

}  // namespace kelvar
