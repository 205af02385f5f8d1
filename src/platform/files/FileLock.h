#pragma once

#include <QString>
#include <chrono>
#include <memory>

#include "pixels/Result.h"
#include "platform/Export.h"

namespace kelvar {

/// Makes other programs that lock the same file wait while this one reads and replaces it.
///
/// This is the system's lock on the file itself: there is no lock file, and the lock ends with the
/// program, even if that crashes. A program that has waited notices if the locked file has been
/// replaced in the meantime, and locks the new one.
///
/// The lock is advisory. If the file system does not support locks, or the file does not exist yet,
/// no other program is kept waiting.
class KELVAR_EXPORT FileLock {
 public:
  /// Fails if another program holds the lock for longer than `patience`.
  static Result<std::unique_ptr<FileLock>> take(const QString& path,
                                                std::chrono::milliseconds patience);
  ~FileLock();
  FileLock(const FileLock&) = delete;
  FileLock& operator=(const FileLock&) = delete;

 private:
  explicit FileLock(int file) : file_(file) {}

  const int file_;
};

}  // namespace kelvar
