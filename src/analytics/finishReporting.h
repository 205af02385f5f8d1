#pragma once

#include "platform/Export.h"

namespace kelvar {

/// What a program calls before it ends: gives what is not yet reported at most two seconds, in
/// which the main thread's event loop runs, and keeps the last payload. What is left then is
/// dropped with a log line. A silent server holds nobody for longer. On the main thread.
KELVAR_EXPORT void finishReporting();

}  // namespace kelvar
