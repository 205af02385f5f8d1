#pragma once

#include <QByteArray>
#include <QVariant>

namespace kelvar {

/// The forms of a property list, one source file each. `PropertyList` has checked what it writes
/// (that it is a property list) and the size of what it has read. What fails leaves a sentence in
/// `*error`, and nothing is the result.

QByteArray writeXmlPropertyList(const QVariant& value, QString* error);
QVariant readXmlPropertyList(const QString& text, QString* error);

QByteArray writeBinaryPropertyList(const QVariant& value);
QVariant readBinaryPropertyList(const QByteArray& bytes, QString* error);

QVariant readTextPropertyList(const QString& text, QString* error);

/// In UTC; invalid when the clock does not reach there. Seconds count from the start of 2001.
QDateTime dateFromReferenceSeconds(double seconds);
double referenceSeconds(const QDateTime& date);

}  // namespace kelvar
