#pragma once

#include <QByteArray>
#include <QString>

namespace kelvar::cli {

/// Writes to standard output. Throws a `CommandError` if that fails.
void writeOut(const QByteArray& bytes);

/// The same, followed by a line feed.
void print(const QByteArray& text);

/// Prints one line on standard error, prefixed with the program's name.
void printError(const QString& message);

/// Replaces control characters in untrusted text, such as a server's or a document's, before it is
/// printed: a terminal may take them for commands.
QString sanitizeForTerminal(QString text);

}  // namespace kelvar::cli
