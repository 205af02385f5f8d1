#pragma once

#include <QString>

#include "platform/Export.h"

namespace kelvar {

/// The MD5 digest (RFC 1321) of a string's UTF-8 bytes as 32 upper-case hexadecimal digits. Only
/// what stands before the first NUL counts, as in a C string.
KELVAR_EXPORT QString MD5String(QStringView string);

}  // namespace kelvar
