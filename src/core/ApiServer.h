#pragma once

#include <QString>
#include <QUrl>

#include "platform/Export.h"

namespace kelvar {

/// Where the vendor's API server has `pathAndQuery`, such as "/r/check_version?id=1 beta": what may
/// not stand in an address is percent-escaped, what separates its parts is left alone.
///
/// The server is what KELVAR_API_SERVER names, otherwise KVAPIServer in Info.plist. Empty when
/// there is none, as by default: then nothing is to be sent.
KELVAR_EXPORT QUrl addressOnApiServer(const QString& pathAndQuery);

/// An address on it for the log: without a name and a password.
QString loggedAddress(const QUrl& address);

}  // namespace kelvar
