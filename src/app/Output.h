#pragma once

#include <QByteArray>
#include <QString>

namespace kelvar::app {

/// Writes the text and a line feed to standard output. Throws a `Failure` when that fails.
void print(const QByteArray& text);

/// Words of others, a server's or a document's, without what would be commands to the terminal.
QString printable(QString text);

}  // namespace kelvar::app
