#pragma once

#include <QByteArray>

namespace kelvar {

/// What was packed with gzip (RFC 1952). Null when it is damaged, stops early or comes to more than
/// `most` bytes.
QByteArray gunzipped(const QByteArray& packed, qsizetype most);

}  // namespace kelvar
