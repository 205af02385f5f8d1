#pragma once

#include <QString>

#include "platform/Export.h"

namespace kelvar {

/// The user's email address, stored in the settings under "io.kelvarlabs.kelvar.email"; null if
/// there is none or it is empty. Kelvar never writes it; only the user and scripts do.
KELVAR_EXPORT QString userEmail();

}  // namespace kelvar
