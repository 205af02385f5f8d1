#pragma once

#include <QStringList>

#include "platform/Export.h"

namespace kelvar {

/// The script in plain JavaScript: what it says in brackets as `[object doThis:a with:b]` becomes
/// `object.doThis_with_(a, b)`, `@"text"` becomes `"text"`, `@selector(doThis:with:)` its name as a
/// string, and `@import "file.js"` a call of `kImportFunction`. Every line stays on its line.
///
/// Array literals, subscripts and what stands in strings, regular expressions and comments are left
/// as they are. Never fails: what cannot be understood is left for the engine to complain about.
/// `throw value` becomes `throw kThrownVariable = value`, since the engine tells only of errors,
/// not of other values, where they were thrown.
///
/// It comes in pieces, of which the next goes on on the line where the last one ends: what follows
/// an import is there only after it, so that its functions take the place of imported ones.
KELVAR_EXPORT QStringList plainJavaScript(const QString& script);

inline constexpr const char* kImportFunction = "__kelvarImport";
inline constexpr const char* kThrownVariable = "__kelvarThrown";

}  // namespace kelvar
