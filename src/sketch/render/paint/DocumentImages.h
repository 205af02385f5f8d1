#pragma once

#include <map>

#include "sketch/document/SketchDocument.h"
#include "sketch/render/displaylist/RenderWarnings.h"

namespace kelvar::render {

/// The images of a document for a drawing, converted to the document's color space, in which the
/// drawing is made.
class DocumentImages {
 public:
  DocumentImages(const SketchDocument& document, RenderWarnings* warnings);

  /// Whether the color space of the document, and so of the drawing, is Display P3 rather than
  /// sRGB.
  bool usesDisplayP3() const { return usesDisplayP3_; }
  /// Null, with a warning, if the image is missing or cannot be read.
  ImageRef image(const ImageReference& reference);

 private:
  const SketchDocument& document_;
  RenderWarnings* const warnings_;
  const bool usesDisplayP3_;
  std::map<ImageRef, ImageRef> inDisplayP3_;
};

}  // namespace kelvar::render
