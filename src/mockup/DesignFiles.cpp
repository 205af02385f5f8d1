#include "mockup/DesignFiles.h"

#include "platform/image/ImageFile.h"

namespace kelvar {

Result<ImageRef> DesignFiles::read(const QString& file, const QSizeF& rasterizationSize) {
  const FileState state = fileState(file);
  if (ImageRef cached = cache_.lookup(file, state, rasterizationSize)) return cached;
  bool isVector = false;
  const auto size = [&](const QSizeF& natural) {
    isVector = true;
    return rasterizationSize.isEmpty() ? natural : rasterizationSize;
  };
  auto image = ImageFile::read(file, {.rasterizationSize = size});
  if (!image) return image;
  cache_.insert({.file = file,
                 .state = state,
                 .rasterizationSize = isVector ? std::optional(rasterizationSize) : std::nullopt,
                 .image = *image});
  return image;
}

}  // namespace kelvar
