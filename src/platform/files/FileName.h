#pragma once

#include <QByteArray>
#include <QString>
#include <filesystem>
#include <string>

#include "platform/Export.h"

namespace kelvar {

/// File names as `QString`s that keep every byte.
///
/// The system's file names are bytes. A name in UTF-8 becomes its text. In any other name, each
/// byte that is not UTF-8 becomes a lone surrogate, U+DC80 to U+DCFF, which no valid text contains,
/// and is converted back to the same byte; Qt's own file classes turn such bytes into question
/// marks. Arguments, models, scripts and messages can therefore treat names as ordinary strings.
/// Bytes matter only where a name enters the program (the command line, an environment variable)
/// and where the system is called, which is here and in `File`. To open or examine a file, use
/// these functions, never `QFile` or `QFileInfo` with a name. Their functions that use only the
/// text, such as `suffix()`, are safe.

KELVAR_EXPORT QString fileNameFromBytes(QByteArrayView bytes);
KELVAR_EXPORT QByteArray fileNameBytes(const QString& name);
KELVAR_EXPORT std::filesystem::path filePath(const QString& name);

/// The absolute path, without "." and "..".
KELVAR_EXPORT QString absoluteFileName(const QString& name);

/// For messages: bytes that are not text appear as "\xe9".
KELVAR_EXPORT QString readableFileName(const QString& name);

/// The system's message for an error number, such as "No space left on device".
KELVAR_EXPORT QString systemMessage(int errorNumber);

/// These follow symbolic links.
KELVAR_EXPORT bool isFile(const QString& name);
KELVAR_EXPORT bool isFolder(const QString& name);
KELVAR_EXPORT bool fileExists(const QString& name);
/// A pipe, a device or a socket: written in place, never replaced.
KELVAR_EXPORT bool isFileStream(const QString& name);
/// A file's modification time and size, which differ after a change. Default-constructed if there
/// is no such file.
struct FileState {
  qint64 seconds = 0;
  qint64 nanoseconds = 0;
  qint64 bytes = -1;
  bool operator==(const FileState&) const = default;
};
KELVAR_EXPORT FileState fileState(const QString& name);
/// Whether both names lead to the same existing file.
KELVAR_EXPORT bool isSameFile(const QString& one, const QString& other);

}  // namespace kelvar
