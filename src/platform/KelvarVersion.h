#pragma once

#include "platform/Export.h"

extern "C" {

/// The library's version as a number.
KELVAR_EXPORT extern const double KelvarVersionNumber;

/// The library's version, in the format that the `what` command finds in binaries, with a final
/// line feed.
KELVAR_EXPORT extern const unsigned char KelvarVersionString[];
}
