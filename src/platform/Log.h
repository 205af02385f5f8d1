#pragma once

#include <QStringList>

#include "platform/Export.h"

namespace kelvar {

/// Writes one diagnostic line to the Qt logging category "kelvar": each "%@" in `format` is
/// replaced with the next of `arguments`, or with "(null)" if that is null or there are no more.
///
/// The category prints nothing unless its info messages are enabled, for example with the filter
/// rule "kelvar.info=true". Safe from any thread.
KELVAR_EXPORT void logLine(QStringView format, const QStringList& arguments = {});

/// Warns the user, through the same category, of something that is not reported anywhere else.
/// Printed to standard error unless the program handles Qt's messages differently. Safe from any
/// thread.
KELVAR_EXPORT void warnUser(const QString& sentence);

/// Whether `logLine` writes anything. For lines that are expensive to build.
KELVAR_EXPORT bool isLogging();

}  // namespace kelvar
