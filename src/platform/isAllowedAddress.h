#pragma once

#include <QUrl>

namespace kelvar {

/// Whether requests go there at all: HTTPS, or plain HTTP on this very machine.
bool isAllowedAddress(const QUrl& address);

}  // namespace kelvar
