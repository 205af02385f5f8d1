#pragma once

#include <QByteArray>
#include <QHash>
#include <QSet>
#include <QStringList>
#include <map>
#include <memory>

#include "platform/Export.h"

struct zip;

namespace kelvar {

/// A ZIP archive in memory: named files, read one at a time.
///
/// Input is not trusted: opening refuses archives beyond the limits, encrypted files and names that
/// lead out of the archive, and reading never gives more bytes than the archive announced. Files
/// that are not replaced keep their packed bytes when the archive is written. One thread at a time.
class KELVAR_EXPORT ZipArchive {
 public:
  static constexpr qsizetype kMaxArchiveBytes = qsizetype{1} << 30;
  static constexpr int kMaxFiles = 1 << 16;
  /// Of one file, and of all files together, unpacked.
  static constexpr qsizetype kMaxFileBytes = qsizetype{512} << 20;
  static constexpr qsizetype kMaxBytes = qsizetype{2} << 30;

  /// Null, and `*error` says why, when it cannot be read. No bytes make an empty archive.
  static std::shared_ptr<ZipArchive> read(const QByteArray& bytes, QString* error);

  /// In the order in which they stand, without folders.
  QStringList names() const;
  bool contains(const QString& name) const { return indexes_.contains(name); }

  /// Null, and `*error` says why, when there is no such file, or it is damaged.
  QByteArray file(const QString& name, QString* error) const;

  /// The archive with the files of `replaced` put in the place of those of the same name, or added
  /// at the end in the order of their names, and without those of `removed`. Carries no time of its
  /// own: equal files give equal archives. Empty, and `*error` says why, when it cannot be made.
  QByteArray written(const std::map<QString, QByteArray>& replaced, const QSet<QString>& removed,
                     QString* error) const;

 private:
  ZipArchive() = default;
  QString refuseWhatIsUnsafe();
  bool replace(zip* archive, const QString& name, const QByteArray& bytes) const;

  QByteArray bytes_;
  std::shared_ptr<zip> zip_;
  QHash<QString, quint64> indexes_;
};

}  // namespace kelvar
