#include "sketch/render/paint/DocumentImages.h"

#include "platform/image/ColorProfile.h"
#include "sketch/document/DocumentFiles.h"

namespace kelvar::render {

DocumentImages::DocumentImages(const SketchDocument& document, RenderWarnings* warnings)
    : document_(document), warnings_(warnings), usesDisplayP3_(document.files().usesDisplayP3()) {}

ImageRef DocumentImages::image(const ImageReference& reference) {
  const ImageRef image = document_.image(reference);
  if (!image || !image->isValid()) {
    warnings_->add(
        QStringLiteral("An image is missing or cannot be read: %1.").arg(reference.name));
    return nullptr;
  }
  if (!usesDisplayP3_) return image;
  ImageRef& converted = inDisplayP3_[image];
  if (!converted) converted = std::make_shared<Image>(toDisplayP3(image->pixels()));
  return converted;
}

}  // namespace kelvar::render
