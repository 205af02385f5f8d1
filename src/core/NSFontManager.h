#pragma once

#include "core/NSFont.h"

namespace kelvar {

/// The fonts that are installed. Requires an application with fonts.
class KELVAR_EXPORT NSFontManager : public Object {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }
};

}  // namespace kelvar
