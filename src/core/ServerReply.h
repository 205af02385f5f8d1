#pragma once

#include <QByteArray>
#include <QVariant>

#include "pixels/Result.h"

namespace kelvar {

/// Parses the JSON object or list in a response of the vendor's API server. Logs the result, or why
/// parsing failed.
Result<QVariant> readServerReply(const QByteArray& body);

/// A value for the log: JSON, except that strings are not quoted. A null string if there is no
/// value.
QString loggedValue(const QVariant& value);

}  // namespace kelvar
