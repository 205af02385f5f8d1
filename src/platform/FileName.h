#pragma once

#include <QByteArray>
#include <QString>
#include <filesystem>
#include <string>

#include "platform/Export.h"

namespace kelvar {

/// File names. The system has bytes, everything here has texts, and no two names are one.
///
/// A name in UTF-8 is its text. Each byte of a name that is no UTF-8 becomes a lone surrogate,
/// U+DC80 to U+DCFF, which no valid text has, and so comes back as the byte that it was. Qt's own
/// file classes make question marks of such bytes. This way names need no type of their own on
/// their way through arguments, models, scripts and sentences: bytes matter only where a name comes
/// in (a command line, an environment variable) and where the system is called, which is here and
/// in `WholeFile`. Where a file is opened or asked about, use these, never `QFile` and `QFileInfo`
/// with a name. What those do with texts alone, such as `suffix()`, is fine.

KELVAR_EXPORT QString fileNameFromBytes(QByteArrayView bytes);
KELVAR_EXPORT QByteArray fileNameBytes(const QString& name);
KELVAR_EXPORT std::filesystem::path filePath(const QString& name);

/// From the root on, without "." and "..".
KELVAR_EXPORT QString absoluteFileName(const QString& name);

/// For people: bytes that are no text as "\xe9".
KELVAR_EXPORT QString readableFileName(const QString& name);

/// What the system says about one of its error numbers, such as "No space left on device".
KELVAR_EXPORT QString systemWords(int errorNumber);

/// Of what a name leads to, symbolic links followed.
KELVAR_EXPORT bool isFile(const QString& name);
KELVAR_EXPORT bool isFolder(const QString& name);
KELVAR_EXPORT bool fileExists(const QString& name);
/// A pipe, a device or a socket: there is no place beside it, and nothing to keep.
KELVAR_EXPORT bool isFileStream(const QString& name);
/// What tells that a file has changed; that of none where there is no such file.
struct FileState {
  qint64 seconds = 0;
  qint64 nanoseconds = 0;
  qint64 bytes = -1;
  bool operator==(const FileState&) const = default;
};
KELVAR_EXPORT FileState fileState(const QString& name);
/// Whether two names lead to one file, which exists.
KELVAR_EXPORT bool isSameFile(const QString& one, const QString& other);

}  // namespace kelvar
