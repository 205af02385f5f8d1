#pragma once

#include <QString>

#include "platform/Export.h"

namespace kelvar {

/// The classes, functions and constants that are written in JavaScript, for
/// docs/scripting-foundation.md. Main thread.
struct KELVAR_EXPORT FoundationReference {
  static QString markdown();
};

}  // namespace kelvar
