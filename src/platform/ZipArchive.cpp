#include "platform/ZipArchive.h"

#include <zip.h>

namespace kelvar {
namespace {

/// 1 January 1980 in the local time that archives count in: the earliest that they can tell.
constexpr zip_uint16_t kNoTime = 0;
constexpr zip_uint16_t kFirstDay = (1 << 5) | 1;

QString sentenceOf(zip_error_t* error) { return QString::fromUtf8(zip_error_strerror(error)); }

/// What is not closed is discarded: nothing is ever written back into the bytes that were read.
using Archive = std::unique_ptr<zip_t, decltype(&zip_discard)>;

/// An archive over `bytes`, which must outlive it; null and a sentence otherwise.
Archive openOver(const QByteArray& bytes, int flags, zip_source_t** source, QString* error) {
  zip_error_t problem;
  zip_error_init(&problem);
  *source = zip_source_buffer_create(bytes.constData(), zip_uint64_t(bytes.size()), 0, &problem);
  zip_t* archive = *source ? zip_open_from_source(*source, flags, &problem) : nullptr;
  if (!archive) {
    const bool isOther = zip_error_code_zip(&problem) == ZIP_ER_NOZIP;
    *error = isOther ? QStringLiteral("it is no ZIP archive, or its end is missing")
                     : sentenceOf(&problem);
    zip_source_free(*source);
  }
  zip_error_fini(&problem);
  return Archive(archive, &zip_discard);
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

std::shared_ptr<ZipArchive> ZipArchive::read(const QByteArray& bytes, QString* error) {
  const std::shared_ptr<ZipArchive> archive(new ZipArchive);
  if (bytes.size() > kMaxArchiveBytes) {
    *error = QStringLiteral("it is larger than %1 MiB").arg(kMaxArchiveBytes >> 20);
    return nullptr;
  }
  archive->bytes_ = bytes;
  if (bytes.isEmpty()) return archive;
  zip_source_t* source = nullptr;
  archive->zip_ = std::shared_ptr<zip>(
      openOver(archive->bytes_, ZIP_RDONLY, &source, error).release(), [](zip* opened) {
        if (opened) zip_discard(opened);
      });
  if (!archive->zip_) return nullptr;
  const QString objection = archive->refuseWhatIsUnsafe();
  if (objection.isEmpty()) return archive;
  *error = objection;
  return nullptr;
}

QString ZipArchive::refuseWhatIsUnsafe() {
  const zip_int64_t count = zip_get_num_entries(zip_.get(), 0);
  if (count > kMaxFiles) return QStringLiteral("it has more than %1 files").arg(kMaxFiles);
  qsizetype sum = 0;
  for (zip_uint64_t i = 0; i < zip_uint64_t(count); ++i) {
    zip_stat_t stat;
    if (zip_stat_index(zip_.get(), i, 0, &stat) < 0 || !(stat.valid & ZIP_STAT_SIZE)) {
      return QStringLiteral("its table of contents is damaged");
    }
    const QString name = QString::fromUtf8(stat.name);
    if (leadsOut(name)) {
      return QStringLiteral("it has a file whose path leads out of the archive, \"%1\"").arg(name);
    }
    if (stat.encryption_method != ZIP_EM_NONE) return QStringLiteral("it is encrypted");
    if (stat.size > zip_uint64_t(kMaxFileBytes)) {
      return QStringLiteral("its file %1 would unpack to more than %2 MiB")
          .arg(name)
          .arg(kMaxFileBytes >> 20);
    }
    sum += qsizetype(stat.size);
    if (sum > kMaxBytes) {
      return QStringLiteral("it would unpack to more than %1 MiB").arg(kMaxBytes >> 20);
    }
    if (name.endsWith(u'/')) continue;
    if (indexes_.contains(name)) return QStringLiteral("it has two files named %1").arg(name);
    indexes_.insert(name, i);
  }
  return {};
}

QStringList ZipArchive::names() const {
  std::map<quint64, QString> ordered;
  for (auto i = indexes_.begin(); i != indexes_.end(); ++i) ordered.emplace(i.value(), i.key());
  QStringList names;
  for (const auto& [index, name] : ordered) names.append(name);
  return names;
}

QByteArray ZipArchive::file(const QString& name, QString* error) const {
  if (!contains(name)) {
    *error = QStringLiteral("it has no file %1").arg(name);
    return {};
  }
  const quint64 index = indexes_.value(name);
  zip_stat_t stat;
  zip_stat_index(zip_.get(), index, 0, &stat);
  QByteArray bytes(qsizetype(stat.size), Qt::Uninitialized);
  zip_file_t* file = zip_fopen_index(zip_.get(), index, 0);
  // One byte more than announced makes libzip compare the checksum, and shows who announces less.
  char more = 0;
  const bool isWhole = file && zip_fread(file, bytes.data(), stat.size) == zip_int64_t(stat.size) &&
                       zip_fread(file, &more, 1) == 0;
  if (!isWhole) {
    const QString why =
        file ? sentenceOf(zip_file_get_error(file)) : sentenceOf(zip_get_error(zip_.get()));
    *error = QStringLiteral("its file %1 is damaged (%2)").arg(name, why);
  }
  if (file) zip_fclose(file);
  return isWhole ? bytes : QByteArray();
}

QByteArray ZipArchive::written(const std::map<QString, QByteArray>& replaced,
                               const QSet<QString>& removed, QString* error) const {
  zip_source_t* source = nullptr;
  const int flags = bytes_.isEmpty() ? ZIP_CREATE | ZIP_TRUNCATE : 0;
  Archive archive = openOver(bytes_, flags, &source, error);
  if (!archive) return {};
  for (const auto& [name, bytes] : replaced) {
    if (!replace(archive.get(), name, bytes)) {
      *error = sentenceOf(zip_get_error(archive.get()));
      return {};
    }
  }
  for (const QString& name : removed) {
    if (contains(name)) zip_delete(archive.get(), indexes_.value(name));
  }
  zip_source_keep(source);
  QByteArray result;
  if (zip_close(archive.get()) == 0) {
    archive.release();
    result = allOf(source);
    if (result.isEmpty()) *error = sentenceOf(zip_source_error(source));
  } else {
    *error = sentenceOf(zip_get_error(archive.get()));
    archive.reset();
  }
  zip_source_free(source);
  return result;
}

bool ZipArchive::replace(zip* archive, const QString& name, const QByteArray& bytes) const {
  zip_source_t* file = zip_source_buffer(archive, bytes.constData(), zip_uint64_t(bytes.size()), 0);
  if (!file) return false;
  const bool isNew = !contains(name);
  const zip_int64_t added =
      isNew ? zip_file_add(archive, name.toUtf8().constData(), file, ZIP_FL_ENC_UTF_8) : 0;
  const zip_uint64_t index = isNew ? zip_uint64_t(added) : indexes_.value(name);
  if (added < 0 || (!isNew && zip_file_replace(archive, index, file, 0) < 0)) {
    zip_source_free(file);
    return false;
  }
  return zip_file_set_dostime(archive, index, kNoTime, kFirstDay, 0) == 0;
}

}  // namespace kelvar
