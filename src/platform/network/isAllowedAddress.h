#pragma once

#include <QUrl>

namespace kelvar {

/// Whether requests may be sent to this URL: HTTPS, or plain HTTP on this machine.
bool isAllowedAddress(const QUrl& address);

}  // namespace kelvar
