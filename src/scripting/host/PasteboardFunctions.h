#pragma once

#include "runtime/ClassInfo.h"

namespace kelvar {

/// The clipboard, for the runtime's own JavaScript: that of the desktop where the program has one,
/// else one within the process. Main thread.
struct PasteboardFunctions {
  static const ClassInfo& staticClassInfo();
};

}  // namespace kelvar
