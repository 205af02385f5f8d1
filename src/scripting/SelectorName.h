#pragma once

#include <QStringList>

#include "platform/Export.h"

namespace kelvar {

/// The name of a selector in scripts: each colon becomes an underscore, each underscore two.
KELVAR_EXPORT QString scriptName(const QString& selector);

/// `scriptName` without the last underscore, if the selector ends with a colon.
KELVAR_EXPORT QString shortScriptName(const QString& selector);

/// The name with the smallest edit distance; a change of case counts half. Null for an empty list.
KELVAR_EXPORT QString nearestName(const QString& name, const QStringList& names);

}  // namespace kelvar
