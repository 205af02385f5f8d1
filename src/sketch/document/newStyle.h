#pragma once

#include "sketch/document/SketchJson.h"

namespace kelvar {

/// A style and its parts as documents have them when they are new, with every member that some
/// version of documents requires.

SketchJson newStyle();
SketchJson newFill();
/// A fill with an image of the document, "images/…", stretched to the layer.
SketchJson newStretchedImageFill(const QString& imageFile);
SketchJson newBorder();
/// `kind` is "shadow" or "innerShadow".
SketchJson newShadow(const char* kind);
SketchJson newContextSettings();
SketchJson newGradient();

}  // namespace kelvar
