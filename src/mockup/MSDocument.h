#pragma once

#include "sketch/document/SketchDocument.h"

namespace kelvar {

/// The class that a document has in scripts, by the name that the host's scripts know.
KELVAR_EXPORT const ClassInfo& documentClass();

}  // namespace kelvar
