#include "host/KeptPictures.h"

#include <algorithm>

#include "platform/FileName.h"
#include "platform/ImageFile.h"

namespace kelvar {
namespace {

/// What the kept pictures take at most, before those that were not used for longest go.
constexpr qsizetype kMostKeptBytes = qsizetype{1} << 30;

}  // namespace

ImageRef KeptPictures::read(const QString& file, const QSizeF& vectorSize, QString* error) {
  Kept fresh{.file = file, .picture = nullptr, .vectorSize = vectorSize, .state = fileState(file)};
  for (qsizetype i = 0; i < kept_.size(); ++i) {
    const Kept& kept = kept_[i];
    if (kept.file != file || kept.state != fresh.state || kept.isForgotten) continue;
    if (kept.isVector && kept.vectorSize != vectorSize) continue;
    kept_.move(i, kept_.size() - 1);
    return kept_.back().picture;
  }
  const auto size = [&](const QSizeF& natural) {
    fresh.isVector = true;
    return vectorSize.isEmpty() ? natural : vectorSize;
  };
  fresh.picture = ImageFile::read(file, {.vectorSize = size}, error);
  if (fresh.picture) keep(fresh);
  return fresh.picture;
}

void KeptPictures::keep(const Kept& fresh) {
  // What is of an older state of the file will never be asked for again.
  kept_.removeIf([&](const Kept& kept) {
    return kept.file == fresh.file && (kept.state != fresh.state || kept.isForgotten);
  });
  kept_.append(fresh);
  qsizetype bytes = 0;
  for (const Kept& kept : kept_) bytes += kept.picture->pixels().sizeInBytes();
  while (bytes > kMostKeptBytes && kept_.size() > 1) {
    bytes -= kept_.takeFirst().picture->pixels().sizeInBytes();
  }
}

ImageRef KeptPictures::last(const QString& file) const {
  const auto last = std::find_if(kept_.rbegin(), kept_.rend(),
                                 [&](const Kept& kept) { return kept.file == file; });
  return last == kept_.rend() ? nullptr : last->picture;
}

void KeptPictures::forget(const QString& file) {
  for (Kept& kept : kept_) {
    if (kept.file == file) kept.isForgotten = true;
  }
}

}  // namespace kelvar
