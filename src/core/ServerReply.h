#pragma once

#include <QByteArray>
#include <QVariant>

namespace kelvar {

/// The JSON object or list that the vendor's API server answered with. Logs what was read, or why
/// it was not; then it is invalid and `*error` says why.
QVariant readServerReply(const QByteArray& body, QString* error);

/// JSON for the log; a string as it is, a null one for none.
QString loggedValue(const QVariant& value);

}  // namespace kelvar
