#pragma once

#include "runtime/ClassInfo.h"

namespace kelvar {

/// What the runtime's own JavaScript needs for alerts and panels: the user, and the values of
/// fields. Main thread.
struct DialogFunctions {
  static const ClassInfo& staticClassInfo();
};

}  // namespace kelvar
