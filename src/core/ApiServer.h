#pragma once

#include <QString>
#include <QUrl>

#include "platform/Export.h"

namespace kelvar {

/// The URL of `pathAndQuery`, such as "/r/check_version?id=1 beta", on the vendor's API server.
/// Characters that are invalid in a URL are percent-escaped; delimiters are kept.
///
/// The server comes from KELVAR_API_SERVER, or else from KVAPIServer in Info.plist. Empty if there
/// is none, as by default: then nothing may be sent.
KELVAR_EXPORT QUrl addressOnApiServer(const QString& pathAndQuery);

/// A URL on that server for the log, without user name and password.
QString loggedAddress(const QUrl& address);

}  // namespace kelvar
