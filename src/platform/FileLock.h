#pragma once

#include <QString>
#include <chrono>
#include <memory>

#include "platform/Export.h"

namespace kelvar {

/// Keeps other programs that lock the same file waiting, from reading it to putting another in its
/// place. It is the system's lock on the file itself: nothing is left beside it, and it ends with
/// the program, however that ends. Who has waited finds that the file is no longer the one that was
/// locked, and locks the new one.
///
/// It binds only those who ask for it. Where the file system has no locks, or there is no such file
/// yet, it holds off nobody.
class KELVAR_EXPORT FileLock {
 public:
  /// Null, and a sentence, when another program holds it for longer than `patience`.
  static std::unique_ptr<FileLock> take(const QString& path, std::chrono::milliseconds patience,
                                        QString* error);
  ~FileLock();
  FileLock(const FileLock&) = delete;
  FileLock& operator=(const FileLock&) = delete;

 private:
  explicit FileLock(int file) : file_(file) {}

  const int file_;
};

}  // namespace kelvar
