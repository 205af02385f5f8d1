#include "platform/files/FileReplacement.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <QByteArray>
#include <QByteArrayList>
#include <QRandomGenerator>
#include <cerrno>
#include <climits>

#include "platform/QtError.h"
#include "platform/files/FileName.h"

namespace kelvar {
namespace {

namespace fs = std::filesystem;

constexpr int kMaxLinks = 40;
constexpr int kMaxNames = 100;
/// Lists the open files by descriptor.
constexpr const char* kOpenFiles = "/proc/self/fd";

/// The target of symbolic links, which need not exist.
fs::path withoutLinks(fs::path path) {
  std::error_code error;
  for (int i = 0; i < kMaxLinks && fs::is_symlink(path, error); ++i) {
    path = path.parent_path() / fs::read_symlink(path, error);
  }
  return path;
}

/// The old group's rights are not for the new group: it gets those of everybody.
mode_t withoutGroup(mode_t mode) { return (mode & ~mode_t{S_IRWXG}) | ((mode & S_IRWXO) << 3); }

/// Attributes that belong to the old contents.
bool isOfContents(const QByteArray& attribute) {
  return attribute == "security.capability" || attribute == "security.ima" ||
         attribute == "security.evm";
}

/// Access control lists included. What cannot be set is left out.
void copyAttributes(const fs::path& from, int to) {
  QByteArray names(XATTR_LIST_MAX, '\0');
  const ssize_t length = ::listxattr(from.c_str(), names.data(), size_t(names.size()));
  if (length <= 0) return;
  names.truncate(length - 1);
  QByteArray value(XATTR_SIZE_MAX, '\0');
  for (const QByteArray& name : names.split('\0')) {
    const ssize_t size =
        ::getxattr(from.c_str(), name.constData(), value.data(), size_t(value.size()));
    if (size < 0 || isOfContents(name)) continue;
    ::fsetxattr(to, name.constData(), value.constData(), size_t(size), 0);
  }
}

/// The owner first: setting it clears permissions. Set-user-ID bits are not restored.
void makeLike(const fs::path& path, const struct stat& before, int file) {
  const bool isOwner = ::fchown(file, before.st_uid, before.st_gid) == 0;
  const bool isGroup = isOwner || ::fchown(file, uid_t(-1), before.st_gid) == 0;
  const mode_t mode = before.st_mode & mode_t{ACCESSPERMS};
  ::fchmod(file, isGroup ? mode : withoutGroup(mode));
  if (isGroup) copyAttributes(path, file);
}

}  // namespace

FileReplacement::FileReplacement(const QString& path) : target_(withoutLinks(filePath(path))) {}

FileReplacement::~FileReplacement() {
  if (file_ >= 0) ::close(file_);
  if (!beside_.empty()) ::unlink(beside_.c_str());
}

Result<void> FileReplacement::begin() {
  struct stat before {};
  const bool isThere = ::stat(target_.c_str(), &before) == 0;
  if (!isThere && errno != ENOENT) return systemFailure(errno);
  if (isThere && S_ISDIR(before.st_mode)) {
    return failure(Error::Kind::Io, QStringLiteral("there is a folder of that name"));
  }
  // Private until the final permissions are set.
  const mode_t permissions = isThere ? S_IRUSR | S_IWUSR : DEFFILEMODE;
  const fs::path folder = target_.has_parent_path() ? target_.parent_path() : fs::path(".");
  if (::access(kOpenFiles, X_OK) == 0) {
    file_ = ::open(folder.c_str(), O_WRONLY | O_TMPFILE | O_CLOEXEC, permissions);
  }
  if (file_ >= 0) return {};
  const bool isMade = nameBeside([&](const char* name) {
    file_ = ::open(name, O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, permissions);
    return file_ >= 0;
  });
  if (!isMade) return systemFailure(errno);
  return {};
}

/// Tries random names until `make` accepts one. Sets `errno` when false.
template <class Make>
bool FileReplacement::nameBeside(const Make& make) {
  constexpr int kLetters = 6;
  const std::string start = target_.filename().native().substr(0, NAME_MAX - kLetters - 1) + '.';
  for (int i = 0; i < kMaxNames; ++i) {
    const QString end = QStringLiteral("%1").arg(QRandomGenerator::global()->bounded(1u << 24),
                                                 kLetters, 16, QLatin1Char('0'));
    const fs::path name = target_.parent_path() / (start + end.toStdString());
    if (make(name.c_str())) {
      beside_ = name;
      return true;
    }
    if (errno != EEXIST) return false;
  }
  return false;
}

bool FileReplacement::giveName() {
  const std::string open = std::string(kOpenFiles) + '/' + std::to_string(file_);
  return nameBeside([&](const char* name) {
    return ::linkat(AT_FDCWD, open.c_str(), AT_FDCWD, name, AT_SYMLINK_FOLLOW) == 0;
  });
}

Result<void> FileReplacement::finish() {
  struct stat before {};
  if (::stat(target_.c_str(), &before) == 0) makeLike(target_, before, file_);
  const bool isDone = ::fdatasync(file_) == 0 && (!beside_.empty() || giveName()) &&
                      ::rename(beside_.c_str(), target_.c_str()) == 0;
  if (!isDone) return systemFailure(errno);
  beside_.clear();
  return {};
}

}  // namespace kelvar
