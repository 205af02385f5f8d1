#pragma once

#include "runtime/ClassInfo.h"

namespace kelvar {

/// Programs that the runtime's own JavaScript starts, by number. They need the permission to run
/// and go on when the script ends. Main thread.
struct ProgramFunctions {
  static const ClassInfo& staticClassInfo();
};

}  // namespace kelvar
