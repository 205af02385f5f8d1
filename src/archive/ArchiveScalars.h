#pragma once

#include <QVariant>
#include <cstdint>

#include "runtime/Object.h"

namespace kelvar {

/// Values of an archive's tree, read leniently: numbers convert to one another as in C, strings are
/// read as the number at their start, and everything else is zero.

bool archivedBool(const QVariant& value);
/// Integers are truncated to 32 bits, strings and reals clamped.
int32_t archivedInt(const QVariant& value);
int64_t archivedInt64(const QVariant& value);
double archivedReal(const QVariant& value);

/// The class name of a value on Sketch's platform, for messages.
QString archivedClassName(const QVariant& value);

/// The object in `value`, or null.
ObjectRef objectIn(const QVariant& value);

/// Whether the value is invalid, a null reference or string, or an empty date or URL.
bool isNone(const QVariant& value);

}  // namespace kelvar
