#pragma once

#include "runtime/Object.h"

namespace kelvar {

/// Stands in a graph that is being read where an alias names what is not read yet.
class KELVAR_EXPORT HRCoderAliasPlaceholder : public Object {
 public:
  /// The only one. Safe from any thread.
  static ObjectRef placeholder();
  static const ClassInfo& theClass();
  const ClassInfo& classInfo() const override { return theClass(); }
};

}  // namespace kelvar
