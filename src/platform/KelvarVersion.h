#pragma once

#include "platform/Export.h"

extern "C" {

/// The library's version as a number.
KELVAR_EXPORT extern const double KelvarVersionNumber;

/// The library's version in the form that `what` finds in a binary, ending in a line feed.
KELVAR_EXPORT extern const unsigned char KelvarVersionString[];
}
