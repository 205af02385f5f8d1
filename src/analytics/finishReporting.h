#pragma once

#include "platform/Export.h"

namespace kelvar {

/// Call this before the program ends. Runs the main event loop for at most two seconds to send
/// pending reports, and stores the last payload. Reports that are still pending then are dropped
/// and logged, so a silent server cannot delay the program any longer. Use on the main thread.
KELVAR_EXPORT void finishReporting();

}  // namespace kelvar
