#pragma once

#include <QByteArray>
#include <QSet>
#include <QStringList>
#include <map>
#include <memory>

#include "pixels/Result.h"
#include "platform/Export.h"

namespace kelvar {

/// A ZIP archive in memory: named files, read one at a time.
///
/// Input is not trusted: opening fails for archives beyond the limits, encrypted files and names
/// that lead out of the archive, and reading never returns more bytes than the archive declares.
/// Files that are not replaced keep their compressed bytes when the archive is written. One thread
/// at a time.
class KELVAR_EXPORT ZipArchive {
 public:
  static constexpr qsizetype kMaxArchiveBytes = qsizetype{1} << 30;
  static constexpr int kMaxFiles = 1 << 16;
  /// Uncompressed, of one file and of all files together.
  static constexpr qsizetype kMaxFileBytes = qsizetype{512} << 20;
  static constexpr qsizetype kMaxBytes = qsizetype{2} << 30;

  virtual ~ZipArchive() = default;

  /// Empty `bytes` result in an empty archive.
  static Result<std::shared_ptr<ZipArchive>> read(const QByteArray& bytes);

  /// In the archive's order, without folders.
  virtual QStringList names() const = 0;
  virtual bool contains(const QString& name) const = 0;

  /// Fails when there is no such file, or it is damaged.
  virtual Result<QByteArray> file(const QString& name) const = 0;

  /// The archive without the files in `removed`, and with those in `replaced`, which take the place
  /// of files of the same name or are added at the end, sorted by name. No times are recorded, so
  /// that equal files result in equal archives.
  virtual Result<QByteArray> written(const std::map<QString, QByteArray>& replaced,
                                     const QSet<QString>& removed) const = 0;
};

}  // namespace kelvar
