#include "platform/files/zip/LibzipArchive.h"

#include <QScopeGuard>
#include <tuple>

#include <zip.h>

namespace kelvar {
namespace {

/// 1 January 1980 in local time, the earliest that archives can record.
constexpr zip_uint16_t kNoTime = 0;
constexpr zip_uint16_t kFirstDay = (1 << 5) | 1;

/// The names in an archive are text, so that `platform/QtError.h`, which this library is not linked
/// with, is not needed.
tl::unexpected<Error> failed(Error::Kind kind, const QString& message) {
  return failure(kind, message.toStdString());
}

tl::unexpected<Error> libzipFailure(zip_error_t* error) {
  return failed(Error::Kind::Damaged, QString::fromUtf8(zip_error_strerror(error)));
}

/// An archive over `bytes`, which must outlive it.
Result<LibzipArchive::Handle> openOver(const QByteArray& bytes, int flags, zip_source_t** source) {
  zip_error_t problem;
  zip_error_init(&problem);
  const auto release = qScopeGuard([&] { zip_error_fini(&problem); });
  *source = zip_source_buffer_create(bytes.constData(), zip_uint64_t(bytes.size()), 0, &problem);
  zip_t* archive = *source ? zip_open_from_source(*source, flags, &problem) : nullptr;
  if (archive) return LibzipArchive::Handle(archive);
  zip_source_free(*source);
  if (zip_error_code_zip(&problem) != ZIP_ER_NOZIP) return libzipFailure(&problem);
  return failed(Error::Kind::Damaged,
                QStringLiteral("it is not a ZIP archive, or its end is missing"));
}

bool leadsOut(const QString& name) {
  if (name.startsWith(u'/') || name.contains(u'\\') || name.contains(QChar(u'\0'))) return true;
  return name.split(u'/').contains(QStringLiteral("..")) || name.indexOf(u':') == 1;
}

QByteArray allOf(zip_source_t* source) {
  QByteArray bytes;
  if (zip_source_open(source) < 0) return bytes;
  zip_stat_t stat;
  if (zip_source_stat(source, &stat) == 0 && (stat.valid & ZIP_STAT_SIZE)) {
    bytes.resize(qsizetype(stat.size));
    if (zip_source_read(source, bytes.data(), stat.size) != zip_int64_t(stat.size)) bytes.clear();
  }
  zip_source_close(source);
  return bytes;
}

}  // namespace

Result<std::shared_ptr<ZipArchive>> LibzipArchive::open(const QByteArray& bytes) {
  std::shared_ptr<LibzipArchive> archive(new LibzipArchive);
  archive->bytes_ = bytes;
  if (bytes.isEmpty()) return archive;
  zip_source_t* source = nullptr;
  Result<Handle> zip = openOver(archive->bytes_, ZIP_RDONLY, &source);
  if (!zip) return tl::unexpected(zip.error());
  archive->zip_ = std::move(*zip);
  if (const Result<void> read = archive->readDirectory(); !read) {
    return tl::unexpected(read.error());
  }
  return archive;
}

Result<void> LibzipArchive::readDirectory() {
  const zip_int64_t count = zip_get_num_entries(zip_.get(), 0);
  if (count > kMaxFiles) {
    return failed(Error::Kind::TooLarge,
                  QStringLiteral("it has more than %1 files").arg(kMaxFiles));
  }
  qsizetype sum = 0;
  for (zip_uint64_t i = 0; i < zip_uint64_t(count); ++i) {
    zip_stat_t entry;
    if (zip_stat_index(zip_.get(), i, 0, &entry) < 0 || !(entry.valid & ZIP_STAT_SIZE)) {
      return failed(Error::Kind::Damaged, QStringLiteral("its table of contents is damaged"));
    }
    const QString name = QString::fromUtf8(entry.name);
    if (const Result<void> checked = checkEntry(entry, name); !checked) return checked;
    sum += qsizetype(entry.size);
    if (sum > kMaxBytes) {
      return failed(Error::Kind::TooLarge,
                    QStringLiteral("it would unpack to more than %1 MiB").arg(kMaxBytes >> 20));
    }
    if (name.endsWith(u'/')) continue;
    if (indexes_.contains(name)) {
      return failed(Error::Kind::Damaged, QStringLiteral("it has two files named %1").arg(name));
    }
    indexes_.insert(name, i);
  }
  return {};
}

Result<void> LibzipArchive::checkEntry(const zip_stat_t& entry, const QString& name) {
  if (leadsOut(name)) {
    return failed(
        Error::Kind::Damaged,
        QStringLiteral("it has a file whose path leads out of the archive, \"%1\"").arg(name));
  }
  if (entry.encryption_method != ZIP_EM_NONE) {
    return failed(Error::Kind::Unsupported, QStringLiteral("it is encrypted"));
  }
  if (entry.size > zip_uint64_t(kMaxFileBytes)) {
    return failed(Error::Kind::TooLarge,
                  QStringLiteral("its file %1 would unpack to more than %2 MiB")
                      .arg(name)
                      .arg(kMaxFileBytes >> 20));
  }
  return {};
}

QStringList LibzipArchive::names() const {
  std::map<quint64, QString> ordered;
  for (auto i = indexes_.begin(); i != indexes_.end(); ++i) ordered.emplace(i.value(), i.key());
  QStringList names;
  for (const auto& [index, name] : ordered) names.append(name);
  return names;
}

Result<QByteArray> LibzipArchive::file(const QString& name) const {
  const auto index = indexes_.constFind(name);
  if (index == indexes_.constEnd()) {
    return failed(Error::Kind::NotFound, QStringLiteral("it has no file %1").arg(name));
  }
  zip_stat_t entry;
  zip_stat_index(zip_.get(), *index, 0, &entry);
  QByteArray bytes(qsizetype(entry.size), Qt::Uninitialized);
  zip_file_t* const file = zip_fopen_index(zip_.get(), *index, 0);
  const auto close = qScopeGuard([file] {
    if (file) zip_fclose(file);
  });
  // Reading past the announced end makes libzip compare the checksum, and finds files that are
  // longer than announced.
  char more = 0;
  const bool isWhole = file &&
                       zip_fread(file, bytes.data(), entry.size) == zip_int64_t(entry.size) &&
                       zip_fread(file, &more, 1) == 0;
  if (isWhole) return bytes;
  zip_error_t* const error = file ? zip_file_get_error(file) : zip_get_error(zip_.get());
  return failed(Error::Kind::Damaged, QStringLiteral("its file %1 is damaged (%2)")
                                          .arg(name, QString::fromUtf8(zip_error_strerror(error))));
}

Result<QByteArray> LibzipArchive::written(const std::map<QString, QByteArray>& replaced,
                                          const QSet<QString>& removed) const {
  static const QByteArray kNothing;
  zip_source_t* source = nullptr;
  // A new archive: when libzip 1.7 changes one in memory, it frees what it does not own.
  Result<Handle> archive = openOver(kNothing, ZIP_CREATE | ZIP_TRUNCATE, &source);
  if (!archive) return tl::unexpected(archive.error());
  if (!addAll(archive->get(), replaced, removed)) {
    return libzipFailure(zip_get_error(archive->get()));
  }
  zip_source_keep(source);
  const auto release = qScopeGuard([source] { zip_source_free(source); });
  if (zip_close(archive->get()) != 0) {
    const auto why = libzipFailure(zip_get_error(archive->get()));
    archive->reset();
    return why;
  }
  std::ignore = archive->release();
  const QByteArray bytes = allOf(source);
  if (bytes.isEmpty()) return libzipFailure(zip_source_error(source));
  return bytes;
}

bool LibzipArchive::addAll(zip_t* archive, const std::map<QString, QByteArray>& replaced,
                           const QSet<QString>& removed) const {
  const zip_int64_t count = zip_ ? zip_get_num_entries(zip_.get(), 0) : 0;
  for (zip_uint64_t i = 0; i < zip_uint64_t(count); ++i) {
    const QString name = QString::fromUtf8(zip_get_name(zip_.get(), i, 0));
    if (removed.contains(name)) continue;
    const auto found = replaced.find(name);
    const bool isAdded =
        found == replaced.end() ? copy(archive, i, name) : add(archive, name, found->second);
    if (!isAdded || (!name.endsWith(u'/') && !packLast(archive, i))) return false;
  }
  for (const auto& [name, bytes] : replaced) {
    if (!contains(name) && !add(archive, name, bytes)) return false;
  }
  return true;
}

bool LibzipArchive::copy(zip_t* archive, zip_uint64_t index, const QString& name) const {
  const QByteArray utf8 = name.toUtf8();
  if (name.endsWith(u'/')) return zip_dir_add(archive, utf8.constData(), ZIP_FL_ENC_UTF_8) >= 0;
  // Still compressed.
  zip_source_t* file = zip_source_zip(archive, zip_.get(), index, 0, 0, -1);
  if (!file) return false;
  const zip_int64_t at = zip_file_add(archive, utf8.constData(), file, ZIP_FL_ENC_UTF_8);
  if (at < 0) {
    zip_source_free(file);
    return false;
  }
  return true;
}

bool LibzipArchive::packLast(zip_t* archive, zip_uint64_t index) const {
  zip_stat_t entry;
  const bool isStored = zip_stat_index(zip_.get(), index, 0, &entry) == 0 &&
                        (entry.valid & ZIP_STAT_COMP_METHOD) != 0 &&
                        entry.comp_method == ZIP_CM_STORE;
  const auto last = zip_uint64_t(zip_get_num_entries(archive, 0)) - 1;
  return !isStored || zip_set_file_compression(archive, last, ZIP_CM_STORE, 0) == 0;
}

bool LibzipArchive::add(zip_t* archive, const QString& name, const QByteArray& bytes) {
  zip_source_t* file = zip_source_buffer(archive, bytes.constData(), zip_uint64_t(bytes.size()), 0);
  if (!file) return false;
  const zip_int64_t index =
      zip_file_add(archive, name.toUtf8().constData(), file, ZIP_FL_ENC_UTF_8);
  if (index >= 0) {
    return zip_file_set_dostime(archive, zip_uint64_t(index), kNoTime, kFirstDay, 0) == 0;
  }
  zip_source_free(file);
  return false;
}

}  // namespace kelvar

extern "C" KELVAR_EXPORT void kelvarReadZipArchive(
    const QByteArray& bytes, kelvar::Result<std::shared_ptr<kelvar::ZipArchive>>* archive) {
  *archive = kelvar::LibzipArchive::open(bytes);
}
