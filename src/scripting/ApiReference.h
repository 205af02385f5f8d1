#pragma once

#include <QString>

#include "platform/Export.h"

namespace kelvar {

/// The documentation in the descriptions of exported classes, for docs/scripting-reference.md,
/// docs/scripting-host-classes.md and docs/kelvar.d.ts.
struct KELVAR_EXPORT ApiReference {
  static QString markdown();
  /// The classes that scripts know from the host application and its platform, in one table.
  static QString hostClasses();
  static QString typeScript();
};

}  // namespace kelvar
