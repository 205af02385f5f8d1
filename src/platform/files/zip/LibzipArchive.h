#pragma once

#include <zip.h>

#include <QHash>
#include <memory>

#include "platform/files/ZipArchive.h"

namespace kelvar {

/// `ZipArchive` implemented with libzip.
class LibzipArchive : public ZipArchive {
 public:
  /// Discards rather than closes: nothing is ever written back into the bytes that were read.
  struct Discard {
    void operator()(zip_t* archive) const { zip_discard(archive); }
  };
  using Handle = std::unique_ptr<zip_t, Discard>;

  static Result<std::shared_ptr<ZipArchive>> open(const QByteArray& bytes);

  QStringList names() const override;
  bool contains(const QString& name) const override { return indexes_.contains(name); }
  Result<QByteArray> file(const QString& name) const override;
  Result<QByteArray> written(const std::map<QString, QByteArray>& replaced,
                             const QSet<QString>& removed) const override;

 private:
  LibzipArchive() = default;
  Result<void> readDirectory();
  /// Fails for an unsafe entry.
  static Result<void> checkEntry(const zip_stat_t& entry, const QString& name);
  /// These return false if libzip fails; the error is then in the archive.
  bool addAll(zip_t* archive, const std::map<QString, QByteArray>& replaced,
              const QSet<QString>& removed) const;
  bool copy(zip_t* archive, zip_uint64_t index, const QString& name) const;
  /// Leaves the archive's last entry uncompressed if the one at this index is.
  bool packLast(zip_t* archive, zip_uint64_t index) const;
  static bool add(zip_t* archive, const QString& name, const QByteArray& bytes);

  QByteArray bytes_;
  Handle zip_;
  QHash<QString, quint64> indexes_;
};

}  // namespace kelvar
