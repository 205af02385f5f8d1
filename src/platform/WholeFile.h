#pragma once

#include <QByteArray>
#include <QIODevice>
#include <QString>
#include <functional>

#include "platform/Export.h"

namespace kelvar {

/// Reads and writes files that fit into memory, and the standard streams likewise. A sentence in
/// `*error` says what went wrong, in the system's own words where it was the system. See
/// `platform/FileName.h` for names that are no text.
class KELVAR_EXPORT WholeFile {
 public:
  /// What speaks against contents that begin like this, or none. Asked before the rest is read.
  using Objection = std::function<QString(const QByteArray& head)>;
  static constexpr qsizetype kHeadBytes = qsizetype{64} << 10;

  /// Writes the contents to the device. What went wrong but for the writing itself, or none.
  using Contents = std::function<QString(QIODevice* device)>;

  WholeFile() = delete;

  /// False when it cannot be read or has more than `most` bytes.
  static bool read(const QString& path, qsizetype most, QByteArray* bytes, QString* error,
                   const Objection& objection = {});
  static bool readStandardInput(qsizetype most, QByteArray* bytes, QString* error,
                                const Objection& objection = {});

  /// Replaces the file, or leaves it as it was: the contents are written beside it, brought to the
  /// disk, and then put in its place. The new file has the owner, group, permissions and extended
  /// attributes of the old one, as far as this user may set them. A symbolic link stays one and
  /// what it leads to is replaced; a hard link is broken. A pipe or a device is written as it
  /// stands.
  static bool write(const QString& path, const QByteArray& bytes, QString* error);
  static bool write(const QString& path, const Contents& contents, QString* error);
  static bool writeStandardOutput(const Contents& contents, QString* error);
};

}  // namespace kelvar
