#include "platform/UserDefaults.h"

#include <fcntl.h>
#include <pwd.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <QtEndian>
#include <cerrno>
#include <filesystem>
#include <mutex>
#include <optional>
#include <system_error>

#include "platform/FileName.h"
#include "platform/Log.h"
#include "platform/PropertyList.h"
#include "platform/SqliteDatabase.h"

namespace kelvar {
namespace {

/// Within a process one call at a time: the system forgets a process's locks on a file when any
/// part of it closes that file.
std::mutex& callMutex() {
  static std::mutex mutex;
  return mutex;
}

void complain(const QString& sentence, QString* error) {
  logLine(u"UserDefaults: %@", {sentence});
  if (error) *error = sentence;
}

/// Where the caller does not want to know, the user has to. Within a call.
void complainOf(const QString& path, const QString& sentence, QString* error) {
  static QSet<QString> told;
  if (error || told.contains(path)) return complain(sentence, error);
  told.insert(path);
  warnUser(sentence);
}

[[noreturn]] void fail(const char* what) {
  throw std::system_error(errno, std::generic_category(), what);
}

bool isThere(const QString& path) {
  if (::access(fileNameBytes(path).constData(), F_OK) == 0) return true;
  return errno != ENOENT && errno != ENOTDIR;
}

/// Makes the folder, for the user alone, and an empty file.
void makeFile(const QString& path) {
  const std::filesystem::path name = fileNameBytes(path).toStdString();
  std::error_code ignored;  // What is missing is told by the next call.
  std::filesystem::create_directories(name.parent_path().parent_path(), ignored);
  if (::mkdir(name.parent_path().c_str(), 0700) != 0 && errno != EEXIST) {
    fail("the folder cannot be made");
  }
  const int file = ::open(name.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
  if (file < 0) fail("the file cannot be made");
  ::close(file);
}

/// Holds off other processes that would set the same file aside.
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

/// Why the file is none of ours, or beyond us; null for a store and for what is no database. Told
/// from its header: to open it would be to finish what its owner has left undone.
QString objectionTo(const QByteArray& header) {
  const auto number = [&](qsizetype at) {
    return qFromBigEndian<quint32>(header.constData() + at);
  };
  constexpr qsizetype kVersionAt = 60, kApplicationAt = 68;
  if (number(kApplicationAt) != kApplication) {
    return QStringLiteral("it is another program's database");
  }
  if (number(kVersionAt) <= kVersion) return {};
  return QStringLiteral("a newer version of Kelvar wrote the file, in format %1 instead of %2")
      .arg(number(kVersionAt))
      .arg(kVersion);
}

/// Throws when the file is not to be touched. An empty one is an empty store.
void checkFile(const QString& path, bool mayBeMistaken) {
  constexpr qsizetype kHeaderSize = 100;
  const int number = ::open(fileNameBytes(path).constData(), O_RDONLY | O_CLOEXEC);
  QFile file;
  // SQLite will say why.
  if (number < 0 || !file.open(number, QIODevice::ReadOnly | QIODevice::Unbuffered,
                               QFileDevice::AutoCloseHandle)) {
    return;
  }
  const QByteArray header = file.read(kHeaderSize);
  const bool isDatabase =
      header.size() == kHeaderSize && header.startsWith(QByteArrayView("SQLite format 3", 16));
  const QString objection = isDatabase ? objectionTo(header)
                            : mayBeMistaken && !header.isEmpty()
                                ? QStringLiteral("it is not a Kelvar settings file")
                                : QString();
  if (!objection.isNull()) throw std::runtime_error(objection.toStdString());
}

/// Why the file cannot be read, where its contents are to blame.
std::optional<QString> damage(const QString& path) {
  try {
    SqliteDatabase database(path);
    SqliteStatement check(database, "PRAGMA quick_check(1)");
    const QByteArray verdict = check.step() ? check.column(0) : "ok";
    if (verdict == "ok") return std::nullopt;
    return QString::fromUtf8(verdict);
  } catch (const SqliteError& error) {
    if (!error.isDamage()) return std::nullopt;
    return QString::fromUtf8(error.what());
  }
}

/// Another process may have been faster, and the file be whole again.
void setAside(const QString& path) {
  const FolderLock lock(path);
  const std::optional<QString> reason = damage(path);
  if (!reason) return;
  const QString name =
      path + QDateTime::currentDateTimeUtc().toString(u"'.damaged-'yyyy-MM-dd'T'HH-mm-ss-zzz'Z'");
  const bool done = !fileExists(name) &&
                    ::rename(fileNameBytes(path).constData(), fileNameBytes(name).constData()) == 0;
  warnUser(
      (done ? QStringLiteral("the settings in %1 are damaged (%2): they are in %3 now, and new "
                             "ones are begun")
            : QStringLiteral("the settings in %1 are damaged (%2) and cannot be set aside as %3"))
          .arg(path, *reason, name));
}

enum class Access { Read, Write };

/// Runs `work` on the open file, and once more on an empty one if the file was damaged. There is
/// nothing to read where there is no file; to be written, it is made.
template <class Work>
bool onFile(const QString& path, bool mayBeMistaken, Access access, QString* error,
            const Work& work) {
  constexpr int kMostTurns = 4;
  const std::scoped_lock lock(callMutex());
  bool first = true;
  for (int turn = 1;; ++turn) {
    try {
      // Looked at once: another process may set the file aside meanwhile.
      const bool isNoFile = isFileStream(path) || isFolder(path);
      if (!isThere(path)) {
        if (access == Access::Read) return true;
        makeFile(path);
      } else if (isNoFile) {
        // Beside a device, a journal would be left, and a device cannot be set aside.
        throw std::runtime_error("it is no regular file");
      } else {
        checkFile(path, mayBeMistaken);
      }
      SqliteDatabase database(path);
      try {
        work(database);
        return true;
      } catch (const SqliteError& failure) {
        if (!first || !failure.isDamage()) throw;
      }
    } catch (const std::runtime_error& failure) {
      // Another process has set the file aside between two steps of ours.
      const auto* const known = dynamic_cast<const SqliteError*>(&failure);
      if (turn < kMostTurns && known && known->isMissing()) continue;
      complainOf(path,
                 QStringLiteral("the settings in %1 cannot be %2: %3")
                     .arg(path, access == Access::Read ? u"read" : u"written",
                          QString::fromUtf8(failure.what())),
                 error);
      return false;
    }
    setAside(path);
    first = false;
  }
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

/// Of all forms of property lists, only the binary one is kept here.
QVariant readValue(const QByteArray& bytes, QString* error) {
  if (bytes.startsWith("bplist")) return PropertyList::read(bytes, nullptr, error);
  *error = QStringLiteral("it is no binary property list");
  return {};
}

/// What the system knows where the environment says nothing, as in services.
QString homeFolder() {
  const QString named = fileNameFromBytes(qgetenv("HOME"));
  if (QDir::isAbsolutePath(named)) return QDir::cleanPath(named);
  QByteArray room(1 << 14, Qt::Uninitialized);
  passwd entry{};
  passwd* found = nullptr;
  ::getpwuid_r(::getuid(), &entry, room.data(), size_t(room.size()), &found);
  return found ? fileNameFromBytes(found->pw_dir) : QDir::rootPath();
}

QString configurationFolder() {
  const QString folder = fileNameFromBytes(qgetenv("XDG_CONFIG_HOME"));
  if (QDir::isAbsolutePath(folder)) return folder;
  return homeFolder() + QStringLiteral("/.config");
}

}  // namespace

UserDefaults UserDefaults::standard() {
  const QString named = fileNameFromBytes(qgetenv("KELVAR_DEFAULTS"));
  if (!named.isEmpty()) return UserDefaults(named, true);
  return UserDefaults(configurationFolder() + QStringLiteral("/kelvar/settings.sqlite"));
}

UserDefaults::UserDefaults(const QString& path) : UserDefaults(path, false) {}

UserDefaults::UserDefaults(const QString& path, bool mayBeMistaken)
    : path_(absoluteFileName(path)), mayBeMistaken_(mayBeMistaken) {}

bool UserDefaults::setObject(const QVariant& value, const QString& key, QString* error) const {
  if (!isKey(key)) {
    complain(QStringLiteral("%1 cannot be a key: it is no valid Unicode").arg(quoted(key)), error);
    return false;
  }
  QString reason;
  const QByteArray bytes = PropertyList::write(value, PropertyList::Format::Binary, &reason);
  if (bytes.isEmpty() || !readValue(bytes, &reason).isValid()) {
    complain(QStringLiteral("the value for %1 cannot be kept: %2").arg(quoted(key), reason), error);
    return false;
  }
  const QByteArray utf8 = key.toUtf8();
  return onFile(path_, mayBeMistaken_, Access::Write, error, [&](SqliteDatabase& database) {
    database.execute(kBeginWrite);
    if (!database.hasTable("settings")) database.execute(kMakeTable);
    SqliteStatement insert(database, "INSERT OR REPLACE INTO settings VALUES (?1, ?2)");
    insert.bindText(1, utf8);
    insert.bindBlob(2, bytes);
    insert.step();
    database.execute("COMMIT");
  });
}

QVariant UserDefaults::objectForKey(const QString& key, QString* error) const {
  if (!isKey(key)) return {};
  const QByteArray utf8 = key.toUtf8();
  QByteArray bytes;
  onFile(path_, mayBeMistaken_, Access::Read, error, [&](SqliteDatabase& database) {
    if (!database.hasTable("settings")) return;
    SqliteStatement find(database, "SELECT value FROM settings WHERE key = ?1");
    find.bindText(1, utf8);
    if (find.step()) bytes = find.column(0);
  });
  if (bytes.isNull()) return {};
  QString reason;
  const QVariant value = readValue(bytes, &reason);
  if (!value.isValid()) {
    complain(
        QStringLiteral("the value for %1 in %2 cannot be read: %3").arg(quoted(key), path_, reason),
        error);
  }
  return value;
}

bool UserDefaults::removeObjectForKey(const QString& key, QString* error) const {
  if (!isKey(key) || !isThere(path_)) return true;
  const QByteArray utf8 = key.toUtf8();
  return onFile(path_, mayBeMistaken_, Access::Write, error, [&](SqliteDatabase& database) {
    if (!database.hasTable("settings")) return;
    database.execute(kBeginWrite);
    SqliteStatement remove(database, "DELETE FROM settings WHERE key = ?1");
    remove.bindText(1, utf8);
    remove.step();
    database.execute("COMMIT");
  });
}

QStringList UserDefaults::keys(QString* error) const {
  QStringList keys;
  onFile(path_, mayBeMistaken_, Access::Read, error, [&](SqliteDatabase& database) {
    keys.clear();
    if (!database.hasTable("settings")) return;
    SqliteStatement all(database, "SELECT key FROM settings ORDER BY key");
    while (all.step()) keys.append(QString::fromUtf8(all.column(0)));
  });
  return keys;
}

}  // namespace kelvar
