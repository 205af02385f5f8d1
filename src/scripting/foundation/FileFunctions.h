#pragma once

#include "runtime/ClassInfo.h"

namespace kelvar {

/// What the foundation's JavaScript needs of the file system. A function that changes something
/// returns nothing if that worked; a failure is a dictionary of "code" (the platform's number for
/// such an error), "message" and "path". Safe from any thread.
struct FileFunctions {
  static const ClassInfo& staticClassInfo();
};

}  // namespace kelvar
