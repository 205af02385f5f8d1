#pragma once

#include <QString>

#include "platform/Export.h"

namespace kelvar {

/// The MD5 digest (RFC 1321) of a string's UTF-8 bytes up to the first NUL, as in a C string. 32
/// uppercase hexadecimal digits.
KELVAR_EXPORT QString MD5String(QStringView string);

}  // namespace kelvar
