#pragma once

#include <unistd.h>

#include <QIODevice>
#include <cerrno>

namespace kelvar {

/// Writes to an open file descriptor, which it does not close, and remembers the system's error
/// number if a write fails. `QFile` loses it after a partial write, such as when a disk becomes
/// full.
class FileSink : public QIODevice {
 public:
  explicit FileSink(int file) : file_(file) { open(WriteOnly | Unbuffered); }
  bool isSequential() const override { return true; }
  /// 0 while every write has succeeded.
  int errorNumber() const { return errorNumber_; }

 protected:
  qint64 readData(char*, qint64) override { return -1; }
  qint64 writeData(const char* bytes, qint64 size) override {
    for (qint64 done = 0; done < size;) {
      const ssize_t written = ::write(file_, bytes + done, size_t(size - done));
      if (written >= 0) {
        done += written;
      } else if (errno != EINTR) {
        errorNumber_ = errno;
        return -1;
      }
    }
    return size;
  }

 private:
  const int file_;
  int errorNumber_ = 0;
};

}  // namespace kelvar
