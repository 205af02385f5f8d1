#pragma once

#include "runtime/Object.h"

namespace kelvar {

/// Takes the place of a forward alias while a graph is being read.
class KELVAR_EXPORT HRCoderAliasPlaceholder : public Object {
 public:
  /// The only instance. Safe from any thread.
  static ObjectRef placeholder();
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }
};

}  // namespace kelvar
