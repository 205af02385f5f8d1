#pragma once

#include <QStringList>

#include "platform/Export.h"

namespace kelvar {

/// Translates a script to plain JavaScript, line by line:
///
/// - `[object doThis:a with:b]` becomes a call of `kSendFunction`, which calls
///   `object.doThis_with_(a, b)` unless the object is nil;
/// - `text.length()` becomes a call of `kLengthMethod`, since a JavaScript string has a number of
///   that name;
/// - `@"text"` becomes `"text"`;
/// - `@selector(doThis:with:)` becomes `"doThis:with:"`;
/// - `@import "file.js"` becomes a call of `kImportFunction`;
/// - `throw value` becomes `throw kThrownVariable = value`, since the engine records the place for
///   errors only;
/// - `catch (error) {` becomes `catch (error) { error = kCaughtFunction(error);`, which says more
/// of
///   calls of unknown members than the engine does.
///
/// List literals, subscripts, strings, regular expressions and comments are copied. Never fails:
/// what is malformed is left for the engine to report.
///
/// Returns chunks to be evaluated in order, each beginning on the line where the one before ends.
/// What follows an import is in a later chunk, so that its functions replace imported ones.
KELVAR_EXPORT QStringList preprocess(const QString& script);

inline constexpr const char* kImportFunction = "__kelvarImport";
inline constexpr const char* kSendFunction = "__kelvarSend";
inline constexpr const char* kLengthMethod = "__kelvarLength";
inline constexpr const char* kCaughtFunction = "__kelvarCaught";
inline constexpr const char* kThrownVariable = "__kelvarThrown";

}  // namespace kelvar
