#pragma once

#include <QStringList>

#include "platform/Export.h"

namespace kelvar {

/// Writes one diagnostic line to the Qt logging category "kelvar": each "%@" in `format` stands
/// for the next of `arguments`, "(null)" for a null one and when they run out.
///
/// The category is silent until its info lines are switched on, e.g. with the filter rule
/// "kelvar.info=true". Safe from any thread.
KELVAR_EXPORT void logLine(QStringView format, const QStringList& arguments = {});

/// Writes a sentence for the user, who is told nowhere else, as a warning of the same category. It
/// is seen on standard error unless the program does something else with what Qt logs. Safe from
/// any thread.
KELVAR_EXPORT void warnUser(const QString& sentence);

/// Whether lines are written at all, for those that take long to put together.
KELVAR_EXPORT bool isLogging();

}  // namespace kelvar
