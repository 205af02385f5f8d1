#pragma once

#include "runtime/ClassInfo.h"

namespace kelvar {

/// What the foundation's JavaScript needs of the process and of Qt: text encodings, property lists,
/// who and where the user is. Safe from any thread.
struct SystemFunctions {
  static const ClassInfo& staticClassInfo();
};

}  // namespace kelvar
