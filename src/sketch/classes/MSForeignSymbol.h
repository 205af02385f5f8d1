#pragma once

#include "sketch/classes/ModelPart.h"

namespace kelvar {

/// A symbol of a library that a document uses. Instances are `ModelPart`s.
const ClassInfo& foreignSymbolClass();
/// In the document's order.
QVariantList foreignSymbolsOf(const SketchDocumentRef& document);

}  // namespace kelvar
