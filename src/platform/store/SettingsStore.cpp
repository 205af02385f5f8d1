#include "platform/store/SettingsStore.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QtEndian>
#include <cerrno>
#include <filesystem>
#include <mutex>

#include "platform/Log.h"
#include "platform/QtError.h"
#include "platform/files/FileName.h"
#include "platform/plist/PropertyList.h"
#include "platform/store/SqliteDatabase.h"

namespace kelvar {
namespace {

/// One call at a time within the process: closing a file anywhere in a process drops all of its
/// locks on that file.
std::mutex& callMutex() {
  static std::mutex mutex;
  return mutex;
}

bool isThere(const QString& path) {
  if (::access(fileNameBytes(path).constData(), F_OK) == 0) return true;
  return errno != ENOENT && errno != ENOTDIR;
}

tl::unexpected<Error> makingFailure(const char* what) {
  return failure(Error::Kind::Io,
                 QLatin1String(what) + QStringLiteral(": ") + systemMessage(errno));
}

/// Makes the folder, for the user alone, and an empty file.
Result<void> makeFile(const QString& path) {
  const std::filesystem::path name = fileNameBytes(path).toStdString();
  std::error_code ignored;  // The next call reports what is missing.
  std::filesystem::create_directories(name.parent_path().parent_path(), ignored);
  if (::mkdir(name.parent_path().c_str(), 0700) != 0 && errno != EEXIST) {
    return makingFailure("the folder cannot be made");
  }
  const int file = ::open(name.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
  if (file < 0) return makingFailure("the file cannot be made");
  ::close(file);
  return {};
}

/// Keeps other processes from setting the same file aside.
class FolderLock {
 public:
  explicit FolderLock(const QString& path)
      : folder_(::open(fileNameBytes(QFileInfo(path).path()).constData(),
                       O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    if (folder_ >= 0) ::flock(folder_, LOCK_EX);
  }
  ~FolderLock() {
    if (folder_ >= 0) ::close(folder_);
  }
  FolderLock(const FolderLock&) = delete;
  FolderLock& operator=(const FolderLock&) = delete;

 private:
  int folder_;
};

constexpr quint32 kApplication = 0x4b565344;  // "KVSD", for `file`.
constexpr quint32 kVersion = 1;

/// Checks the header of a database without opening it: SQLite would first complete what its owner
/// has left unfinished.
Result<void> checkHeader(const QByteArray& header) {
  const auto number = [&](qsizetype at) {
    return qFromBigEndian<quint32>(header.constData() + at);
  };
  constexpr qsizetype kVersionAt = 60, kApplicationAt = 68;
  if (number(kApplicationAt) != kApplication) {
    return failure(Error::Kind::Unsupported, QStringLiteral("it is another program's database"));
  }
  if (number(kVersionAt) <= kVersion) return {};
  return failure(
      Error::Kind::Unsupported,
      QStringLiteral("a newer version of Kelvar wrote the file, in format %1 instead of %2")
          .arg(number(kVersionAt))
          .arg(kVersion));
}

/// Fails with kind `Damaged` when the contents of the file are to blame.
Result<void> checkContents(const QString& path) {
  const Result<QList<QByteArray>> verdict = SqliteDatabase::open(path).and_then(
      [](SqliteDatabase database) { return database.query("PRAGMA quick_check(1)"); });
  if (!verdict) return tl::unexpected(verdict.error());
  if (verdict->isEmpty() || verdict->first() == "ok") return {};
  return failure(Error::Kind::Damaged, QString::fromUtf8(verdict->first()));
}

constexpr const char* kMakeTable =
    "CREATE TABLE settings (key TEXT NOT NULL PRIMARY KEY, value BLOB NOT NULL) WITHOUT ROWID;"
    "PRAGMA application_id = 0x4b565344;"
    "PRAGMA user_version = 1";

/// With EXTRA a commit is on the disk when it returns, its directory entry included.
constexpr const char* kBeginWrite = "PRAGMA synchronous = EXTRA; BEGIN IMMEDIATE";

/// Keys in messages, on one line.
QString quoted(const QString& key) {
  QString line = key;
  for (QChar& character : line) {
    if (!character.isPrint()) character = QChar::ReplacementCharacter;
  }
  return u'"' + line + u'"';
}

/// Lone surrogates have no UTF-8: two such keys would become one.
bool isKey(const QString& key) { return !key.isNull() && key.isValidUtf16(); }

/// Only the binary format is stored.
Result<QVariant> readValue(const QByteArray& bytes) {
  if (bytes.startsWith("bplist")) return PropertyList::read(bytes);
  return failure(Error::Kind::Damaged, QStringLiteral("it is not a binary property list"));
}

/// The first column of all rows, none when nothing was ever written.
Result<QList<QByteArray>> select(SqliteDatabase& database, const char* sql,
                                 const QByteArray& key = {}) {
  return database.hasTable("settings").and_then([&](bool isThere) -> Result<QList<QByteArray>> {
    if (!isThere) return QList<QByteArray>();
    return database.query(sql, key);
  });
}

/// One statement in a transaction. What fails is rolled back when the database is closed.
Result<void> change(SqliteDatabase& database, const char* sql, const QByteArray& key,
                    const QByteArray& value = {}) {
  return database.query(sql, key, value).and_then([&](const QList<QByteArray>&) {
    return database.execute("COMMIT");
  });
}

}  // namespace

SettingsStore::SettingsStore(const QString& path, UnknownFile unknown)
    : path_(absoluteFileName(path)), unknown_(unknown) {}

Result<void> SettingsStore::write(const QVariant& value, const QString& key) const {
  if (!isKey(key)) {
    return failure(Error::Kind::Unsupported,
                   QStringLiteral("%1 cannot be a key: it is not valid Unicode").arg(quoted(key)));
  }
  const Result<QByteArray> bytes = PropertyList::write(value, PropertyList::Format::Binary);
  const Result<QVariant> again = bytes.and_then(readValue);
  if (!again) {
    return failure(Error::Kind::Unsupported, QStringLiteral("the value for %1 cannot be kept: %2")
                                                 .arg(quoted(key), messageOf(again.error())));
  }
  return run(Access::Write, [&](SqliteDatabase& database) {
    return database.execute(kBeginWrite)
        .and_then([&] { return database.hasTable("settings"); })
        .and_then(
            [&](bool isThere) { return isThere ? Result<void>() : database.execute(kMakeTable); })
        .and_then([&] {
          return change(database, "INSERT OR REPLACE INTO settings VALUES (?1, ?2)", key.toUtf8(),
                        *bytes);
        });
  });
}

Result<QVariant> SettingsStore::read(const QString& key) const {
  if (!isKey(key)) return QVariant();
  QList<QByteArray> found;
  const Result<void> done = run(Access::Read, [&](SqliteDatabase& database) {
    return select(database, "SELECT value FROM settings WHERE key = ?1", key.toUtf8())
        .map([&](const QList<QByteArray>& rows) { found = rows; });
  });
  if (!done) return tl::unexpected(done.error());
  if (found.isEmpty()) return QVariant();
  const Result<QVariant> value = readValue(found.first());
  if (value) return value;
  return failure(Error::Kind::Damaged, QStringLiteral("the value for %1 in %2 cannot be read: %3")
                                           .arg(quoted(key), path_, messageOf(value.error())));
}

Result<void> SettingsStore::remove(const QString& key) const {
  if (!isKey(key) || !isThere(path_)) return {};
  return run(Access::Write, [&](SqliteDatabase& database) {
    return database.hasTable("settings").and_then([&](bool isThere) {
      if (!isThere) return Result<void>();
      return database.execute(kBeginWrite).and_then([&] {
        return change(database, "DELETE FROM settings WHERE key = ?1", key.toUtf8());
      });
    });
  });
}

Result<QStringList> SettingsStore::keys() const {
  QStringList keys;
  const Result<void> done = run(Access::Read, [&](SqliteDatabase& database) {
    return select(database, "SELECT key FROM settings ORDER BY key")
        .map([&](const QList<QByteArray>& rows) {
          for (const QByteArray& key : rows) keys.append(QString::fromUtf8(key));
        });
  });
  if (!done) return tl::unexpected(done.error());
  return keys;
}

/// Sets a damaged file aside once, and tries again when another process has set it aside between
/// two steps.
Result<void> SettingsStore::run(Access access, const Work& work) const {
  constexpr int kMaxAttempts = 4;
  const std::scoped_lock lock(callMutex());
  bool mayBeDamaged = true;
  for (int number = 1;; ++number) {
    const Result<void> done = attempt(access, work);
    if (done) return done;
    if (done.error().kind == Error::Kind::Damaged && mayBeDamaged) {
      setAside();
      mayBeDamaged = false;
    } else if (done.error().kind != Error::Kind::NotFound || number >= kMaxAttempts) {
      return failure(Error::Kind::Io, QStringLiteral("the settings in %1 cannot be %2: %3")
                                          .arg(path_, access == Access::Read ? u"read" : u"written",
                                               messageOf(done.error())));
    }
  }
}

Result<void> SettingsStore::attempt(Access access, const Work& work) const {
  // Asked first: another process may set the file aside meanwhile.
  const bool isNoFile = isFileStream(path_) || isFolder(path_);
  Result<void> checked;
  if (!isThere(path_)) {
    if (access == Access::Read) return {};
    checked = makeFile(path_);
  } else if (isNoFile) {
    // SQLite would leave a journal beside a device, and a device cannot be set aside.
    checked = failure(Error::Kind::Unsupported, QStringLiteral("it is not a regular file"));
  } else {
    checked = checkFile();
  }
  if (!checked) return checked;
  Result<SqliteDatabase> database = SqliteDatabase::open(path_);
  if (!database) return tl::unexpected(database.error());
  return work(*database);
}

/// Fails when the file must not be touched. An empty one is an empty store.
Result<void> SettingsStore::checkFile() const {
  constexpr qsizetype kHeaderSize = 100;
  const int number = ::open(fileNameBytes(path_).constData(), O_RDONLY | O_CLOEXEC);
  QFile file;
  // SQLite will say why.
  if (number < 0 || !file.open(number, QIODevice::ReadOnly | QIODevice::Unbuffered,
                               QFileDevice::AutoCloseHandle)) {
    return {};
  }
  const QByteArray header = file.read(kHeaderSize);
  if (header.size() == kHeaderSize && header.startsWith(QByteArrayView("SQLite format 3", 16))) {
    return checkHeader(header);
  }
  if (unknown_ == UnknownFile::SetAside || header.isEmpty()) return {};
  return failure(Error::Kind::Unsupported, QStringLiteral("it is not a Kelvar settings file"));
}

/// Unless another process was faster, and the file is sound again.
void SettingsStore::setAside() const {
  const FolderLock lock(path_);
  const Result<void> checked = checkContents(path_);
  if (checked || checked.error().kind != Error::Kind::Damaged) return;
  const QString name =
      path_ + QDateTime::currentDateTimeUtc().toString(u"'.damaged-'yyyy-MM-dd'T'HH-mm-ss-zzz'Z'");
  const bool done = !fileExists(name) && ::rename(fileNameBytes(path_).constData(),
                                                  fileNameBytes(name).constData()) == 0;
  warnUser(
      (done ? QStringLiteral("the settings in %1 are damaged (%2): they are in %3 now, and new "
                             "ones are begun")
            : QStringLiteral("the settings in %1 are damaged (%2) and cannot be set aside as %3"))
          .arg(path_, messageOf(checked.error()), name));
}

}  // namespace kelvar
