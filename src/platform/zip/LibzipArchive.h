#pragma once

#include <zip.h>

#include <QHash>
#include <memory>

#include "platform/ZipArchive.h"

namespace kelvar {

/// ZIP archives by libzip.
class LibzipArchive : public ZipArchive {
 public:
  /// What is not closed is discarded: nothing is ever written back into the bytes that were read.
  struct Discard {
    void operator()(zip_t* archive) const { zip_discard(archive); }
  };
  using Handle = std::unique_ptr<zip_t, Discard>;

  /// Null, and `*error` says why, when it cannot be read.
  static std::unique_ptr<LibzipArchive> open(const QByteArray& bytes, QString* error);

  QStringList names() const override;
  bool contains(const QString& name) const override { return indexes_.contains(name); }
  QByteArray file(const QString& name, QString* error) const override;
  QByteArray written(const std::map<QString, QByteArray>& replaced, const QSet<QString>& removed,
                     QString* error) const override;

 private:
  LibzipArchive() = default;
  QString refuseWhatIsUnsafe();
  /// These are false where libzip refuses; it says why.
  bool addAll(zip_t* archive, const std::map<QString, QByteArray>& replaced,
              const QSet<QString>& removed) const;
  bool copy(zip_t* archive, zip_uint64_t index, const QString& name) const;
  static bool add(zip_t* archive, const QString& name, const QByteArray& bytes);

  QByteArray bytes_;
  Handle zip_;
  QHash<QString, quint64> indexes_;
};

}  // namespace kelvar
