#include "platform/files/FileLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <thread>

#include "platform/QtError.h"
#include "platform/files/FileName.h"

namespace kelvar {
namespace {

constexpr std::chrono::milliseconds kPause{20};

/// Whether the open file has been replaced.
bool isReplaced(int file, const QByteArray& path) {
  struct stat open {
  }, there{};
  return ::fstat(file, &open) == 0 && ::stat(path.constData(), &there) == 0 &&
         (open.st_dev != there.st_dev || open.st_ino != there.st_ino);
}

}  // namespace

Result<std::unique_ptr<FileLock>> FileLock::take(const QString& path,
                                                 std::chrono::milliseconds patience) {
  const QByteArray name = fileNameBytes(path);
  const auto end = std::chrono::steady_clock::now() + patience;
  for (;;) {
    const int file = ::open(name.constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
    std::unique_ptr<FileLock> lock(new FileLock(file));
    const bool isHeld = file >= 0 && ::flock(file, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    if (!isHeld && !isReplaced(file, name)) return lock;
    if (std::chrono::steady_clock::now() > end) break;
    lock.reset();
    if (isHeld) std::this_thread::sleep_for(kPause);
  }
  return failure(Error::Kind::Io, QStringLiteral("another program is changing %1").arg(path));
}

FileLock::~FileLock() {
  if (file_ >= 0) ::close(file_);
}

}  // namespace kelvar
