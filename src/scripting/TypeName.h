#pragma once

#include <QString>

#include "runtime/ValueType.h"

namespace kelvar {

/// What scripts call the type: "number", "string", "list", "KVRect", …; "nothing" for `void` and
/// "anything" for `QVariant`.
QString scriptTypeName(const ValueType& type);

/// The type in TypeScript.
QString typeScriptName(const ValueType& type);

}  // namespace kelvar
