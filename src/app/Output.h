#pragma once

#include <QByteArray>
#include <QString>

namespace kelvar::app {

/// Writes to standard output. Throws a `Failure` that says why when that fails.
void writeOut(const QByteArray& bytes);

/// The same, and a line feed.
void print(const QByteArray& text);

/// Words of others, a server's or a document's, without what would be commands to the terminal.
QString printable(QString text);

}  // namespace kelvar::app
