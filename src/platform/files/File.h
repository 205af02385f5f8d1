#pragma once

#include <QByteArray>
#include <QIODevice>
#include <QString>
#include <functional>

#include "pixels/Result.h"
#include "platform/Export.h"

namespace kelvar {

/// Reads and writes files that fit into memory, and the standard streams.
///
/// Error messages name the file and, for a system error, quote the system's message. See
/// `platform/files/FileName.h` for names that are not valid text. Safe from any thread.
class KELVAR_EXPORT File {
 public:
  /// Checks the first `kHeadBytes` of a file (fewer if it is shorter) before the rest is read.
  using HeadCheck = std::function<Result<void>(const QByteArray& head)>;
  static constexpr qsizetype kHeadBytes = qsizetype{64} << 10;

  /// Writes the contents to the device. Fails for its own reasons only; the caller detects failed
  /// writes.
  using Contents = std::function<Result<void>(QIODevice* device)>;

  File() = delete;

  /// Fails when the file cannot be read or has more than `maxBytes`.
  static Result<QByteArray> readAll(const QString& path, qsizetype maxBytes,
                                    const HeadCheck& check = {});
  static Result<QByteArray> readStandardInput(qsizetype maxBytes, const HeadCheck& check = {});

  /// Replaces the file, or leaves it as it was: the contents are written to a temporary file in the
  /// same folder, which is flushed to the disk and then renamed. The new file keeps the owner,
  /// group, permissions and extended attributes of the old one as far as this user may set them. A
  /// symbolic link stays and its target is replaced; a hard link is broken. Pipes and devices are
  /// written in place.
  static Result<void> writeAtomically(const QString& path, const QByteArray& bytes);
  static Result<void> writeAtomically(const QString& path, const Contents& contents);
  static Result<void> writeStandardOutput(const Contents& contents);
};

}  // namespace kelvar
