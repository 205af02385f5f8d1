#pragma once

#include <QList>

#include "platform/Export.h"

namespace kelvar {

class ClassInfo;

/// Every class of layers, styles and other parts of a document, for scripts.
KELVAR_EXPORT QList<const ClassInfo*> sketchClasses();

}  // namespace kelvar
