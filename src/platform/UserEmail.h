#pragma once

#include <QString>

#include "platform/Export.h"

namespace kelvar {

/// The user's e-mail address, as the settings have it under "io.kelvarlabs.kelvar.email"; null when
/// there is none, or an empty one. Nothing here ever writes it: the user does, or the script side.
KELVAR_EXPORT QString userEmail();

}  // namespace kelvar
