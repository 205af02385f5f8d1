#include "host/PhotoMockup.h"

#include <QFileInfo>
#include <algorithm>

#include "host/cornersObjection.h"
#include "platform/ImageFile.h"

namespace kelvar {
namespace {

/// What the kept pictures take at most, before those that were not used for longest go.
constexpr qsizetype kMostKeptBytes = qsizetype{1} << 30;

}  // namespace

ImageRef PhotoMockup::read(const QString& file, const QSizeF& vectorSize, QString* error) {
  const QFileInfo info(file);
  Kept fresh{.file = file,
             .picture = nullptr,
             .vectorSize = vectorSize,
             .changed = info.lastModified(),
             .bytes = info.size()};
  for (qsizetype i = 0; i < kept_.size(); ++i) {
    const Kept& kept = kept_[i];
    if (kept.file != file || kept.changed != fresh.changed || kept.bytes != fresh.bytes) continue;
    if (kept.isVector && kept.vectorSize != vectorSize) continue;
    kept_.move(i, kept_.size() - 1);
    return kept_.back().picture;
  }
  const auto size = [&](const QSizeF&) {
    fresh.isVector = true;
    return vectorSize;
  };
  fresh.picture = ImageFile::read(file, {.vectorSize = size}, error);
  if (fresh.picture) keep(fresh);
  return fresh.picture;
}

void PhotoMockup::keep(const Kept& fresh) {
  // What is of an older state of the file will never be asked for again.
  kept_.removeIf([&](const Kept& kept) {
    return kept.file == fresh.file && (kept.changed != fresh.changed || kept.bytes != fresh.bytes);
  });
  kept_.append(fresh);
  qsizetype bytes = 0;
  for (const Kept& kept : kept_) bytes += kept.picture->pixels().sizeInBytes();
  while (bytes > kMostKeptBytes && kept_.size() > 1) {
    bytes -= kept_.takeFirst().picture->pixels().sizeInBytes();
  }
}

ImageRef PhotoMockup::lastPicture(const QString& file) const {
  const auto last = std::find_if(kept_.rbegin(), kept_.rend(),
                                 [&](const Kept& kept) { return kept.file == file; });
  return last == kept_.rend() ? nullptr : last->picture;
}

Mockup::Drawing PhotoMockup::draw(const Arrangement& arrangement, Shapes shapes) {
  Drawing drawing;
  const ImageRef photo = read(arrangement.photo, {}, &drawing.problem);
  if (!photo) return drawing;
  QImage pixels = photo->pixels();
  for (const Arrangement::Shape& shape : arrangement.shapes) {
    if (shape.design.isEmpty() || (shapes == Shapes::Included && !shape.included)) continue;
    drawShape(arrangement, shape, &pixels, &drawing);
  }
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
  ImageRef picture = read(design->file, mapping.vectorSizeOnPhoto(), &problem);
  complain(problem);
  if (!picture) picture = lastPicture(design->file);
  if (picture && !mapping.layInto(pixels, picture)) {
    complain(QStringLiteral("its corners are too close to a line, or there is too little memory"));
  }
}

ImageRef PhotoMockup::designPicture(const Arrangement::Design& design, QString* error) {
  return read(design.file, {}, error);
}

void PhotoMockup::refresh(const Arrangement::Design& design) {
  // Their pictures stay, to be shown should the file be unreadable.
  for (Kept& kept : kept_) {
    if (kept.file == design.file) kept.bytes = -1;
  }
}

bool PhotoMockup::save(const Arrangement& arrangement, const QString& path, QString* error) {
  return arrangement.write(path, error);
}

}  // namespace kelvar
