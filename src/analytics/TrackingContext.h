#pragma once

#include "analytics/Properties.h"

namespace kelvar {

/// The "context" of a tracking request: facts about the machine, the host application and the
/// plug-in, and `location`, the location service's answer.
///
/// Throws `std::invalid_argument` when the host application or the plug-in lacks a name or a
/// version. Use on the main thread.
QVariantMap trackingContext(const Properties& location);

}  // namespace kelvar
