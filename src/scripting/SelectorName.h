#pragma once

#include <QStringList>

#include "platform/Export.h"

namespace kelvar {

/// How scripts call a selector: an underscore for each colon, and two for an underscore that stands
/// in it. The last one may be left out.
KELVAR_EXPORT QString scriptName(const QString& selector);

/// `scriptName` without its last underscore when the selector ends with a colon.
KELVAR_EXPORT QString shortScriptName(const QString& selector);

/// Whichever of `names` takes the fewest insertions, removals and replacements of characters, upper
/// and lower case being half as far. Null for none.
KELVAR_EXPORT QString nearestName(const QString& name, const QStringList& names);

}  // namespace kelvar
