#pragma once

#include <QString>

#include "platform/Export.h"

namespace kelvar {

/// What the catalogue's descriptions say of themselves, for docs/scripting-reference.md and
/// docs/kelvar.d.ts.
struct KELVAR_EXPORT Reference {
  static QString markdown();
  static QString typeScript();
};

}  // namespace kelvar
