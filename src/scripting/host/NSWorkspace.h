#pragma once

#include "runtime/Object.h"

namespace kelvar {

/// The user's desktop as the host's scripts know it.
class NSWorkspace : public Object {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }
};

}  // namespace kelvar
