#pragma once

#include <QByteArray>
#include <QString>

#include "platform/Export.h"

namespace kelvar {

/// Reads and writes files that fit into memory. A sentence in `*error` says what went wrong.
class KELVAR_EXPORT WholeFile {
 public:
  WholeFile() = delete;

  /// False when it cannot be read or has more than `most` bytes.
  static bool read(const QString& path, qsizetype most, QByteArray* bytes, QString* error);

  /// Replaces the file, or leaves it as it was: the bytes are written beside it, brought to the
  /// disk, and then put in its place. A pipe or a device is written as it stands.
  static bool write(const QString& path, const QByteArray& bytes, QString* error);
};

}  // namespace kelvar
