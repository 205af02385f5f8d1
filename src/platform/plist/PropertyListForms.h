#pragma once

#include <QByteArray>
#include <QVariant>

#include "pixels/Result.h"

namespace kelvar {

/// The formats of a property list, one source file each. Called by `PropertyList`, which has
/// already checked that the value to write is a property list, or that the input to read is not too
/// large.

Result<QByteArray> writeXmlPropertyList(const QVariant& value);
Result<QVariant> readXmlPropertyList(const QString& text);

QByteArray writeBinaryPropertyList(const QVariant& value);
Result<QVariant> readBinaryPropertyList(const QByteArray& bytes);

Result<QVariant> readOpenStepPropertyList(const QString& text);

/// Seconds since the start of 2001, as a date in UTC; invalid when out of `QDateTime`'s range.
QDateTime dateFromReferenceSeconds(double seconds);
double referenceSeconds(const QDateTime& date);

}  // namespace kelvar
