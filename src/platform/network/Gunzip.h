#pragma once

#include <QByteArray>

namespace kelvar {

/// Decompresses gzip data (RFC 1952). Null when it is damaged, incomplete or larger than
/// `maxBytes`.
QByteArray gunzipped(const QByteArray& packed, qsizetype maxBytes);

}  // namespace kelvar
