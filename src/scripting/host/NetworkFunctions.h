#pragma once

#include "runtime/Object.h"

namespace kelvar {

/// What the scripts of the host's network classes call. All are class operations.
class NetworkFunctions {
 public:
  static const ClassInfo& staticClassInfo();
};

}  // namespace kelvar
