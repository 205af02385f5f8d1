#pragma once

#include "runtime/Object.h"

namespace kelvar {

/// The view that scripts scroll to their work when they are done. There is no canvas, so its
/// operations do nothing.
class KELVAR_EXPORT MSContentDrawView : public Object {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }
};

using MSContentDrawViewRef = std::shared_ptr<MSContentDrawView>;

}  // namespace kelvar
