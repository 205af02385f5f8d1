#pragma once

#include <QString>

#include "platform/Export.h"

namespace kelvar {

/// The path of the file `name` below `folder`, where plug-ins written on file systems that ignore
/// the case of letters find theirs: a component that does not exist as it is written becomes the
/// one that differs in case alone, if there is exactly one. Otherwise the path as it is written.
KELVAR_EXPORT QString fileIgnoringCase(const QString& folder, const QString& name);

}  // namespace kelvar
