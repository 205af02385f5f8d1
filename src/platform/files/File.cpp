#include "platform/files/File.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>

#include "platform/QtError.h"
#include "platform/files/FileName.h"
#include "platform/files/FileReplacement.h"
#include "platform/files/FileSink.h"

namespace kelvar {
namespace {

/// An open file descriptor.
class OpenFile {
 public:
  /// The system would take a name only up to its first zero character.
  OpenFile(const QString& path, int flags)
      : number_(path.contains(QChar(u'\0'))
                    ? (errno = EINVAL, -1)
                    : ::open(fileNameBytes(path).constData(), flags | O_CLOEXEC | O_NOCTTY)) {}
  ~OpenFile() {
    if (number_ >= 0) ::close(number_);
  }
  OpenFile(const OpenFile&) = delete;
  OpenFile& operator=(const OpenFile&) = delete;
  int number() const { return number_; }

 private:
  int number_;
};

QString shown(const QString& path) { return path.isEmpty() ? QStringLiteral("\"\"") : path; }

/// Why a file could not be opened for reading.
tl::unexpected<Error> openingFailure(const QString& path, int errorNumber) {
  if (path.isEmpty()) return failure(Error::Kind::NotFound, QStringLiteral("the path is empty"));
  if (errorNumber == EACCES) {
    return failure(Error::Kind::Io, QStringLiteral("its permissions do not let you read it"));
  }
  if (errorNumber != ENOENT) return systemFailure(errorNumber);
  std::error_code error;
  const auto target = std::filesystem::read_symlink(filePath(path), error);
  if (error) return failure(Error::Kind::NotFound, QStringLiteral("there is no such file"));
  return failure(Error::Kind::NotFound, QStringLiteral("it is a link to %1, which does not exist")
                                            .arg(fileNameFromBytes(target.native())));
}

Result<QByteArray> readOpen(int file, qsizetype maxBytes, const File::HeadCheck& check) {
  struct stat facts {};
  if (::fstat(file, &facts) != 0) return systemFailure(errno);
  if (S_ISDIR(facts.st_mode)) return failure(Error::Kind::Io, QStringLiteral("it is a folder"));
  const qsizetype announced = std::clamp<qsizetype>(facts.st_size, 0, maxBytes) + 1;
  QByteArray bytes(std::max(announced, File::kHeadBytes), Qt::Uninitialized);
  bool isChecked = !check;
  for (qsizetype size = 0;;) {
    if (size == bytes.size()) bytes.resize(2 * size);
    const ssize_t part = ::read(file, bytes.data() + size, size_t(bytes.size() - size));
    if (part < 0 && errno == EINTR) continue;
    if (part < 0) return systemFailure(errno);
    size += part;
    if (!isChecked && (part == 0 || size >= File::kHeadBytes)) {
      const Result<void> verdict = check(bytes.first(std::min(size, File::kHeadBytes)));
      if (!verdict) return tl::unexpected(verdict.error());
      isChecked = true;
    }
    if (size > maxBytes) {
      return failure(Error::Kind::TooLarge,
                     QStringLiteral("it is larger than %1 MiB").arg(maxBytes >> 20));
    }
    if (part > 0) continue;
    bytes.resize(size);
    return bytes;
  }
}

Result<QByteArray> openAndRead(const QString& path, qsizetype maxBytes,
                               const File::HeadCheck& check) {
  const OpenFile file(path, O_RDONLY);
  if (file.number() < 0) return openingFailure(path, errno);
  return readOpen(file.number(), maxBytes, check);
}

Result<void> writeOpen(int file, const File::Contents& contents) {
  FileSink sink(file);
  const Result<void> written = contents(&sink);
  // What the system says comes first: contents may fail because a write did.
  if (sink.errorNumber() != 0) return systemFailure(sink.errorNumber());
  return written;
}

Result<void> replace(const QString& path, const File::Contents& contents) {
  FileReplacement replacement(path);
  return replacement.begin()
      .and_then([&] { return writeOpen(replacement.file(), contents); })
      .and_then([&] { return replacement.finish(); });
}

Result<void> openAndWrite(const QString& path, const File::Contents& contents) {
  if (path.isEmpty()) return failure(Error::Kind::NotFound, QStringLiteral("the path is empty"));
  if (!isFileStream(path)) return replace(path, contents);
  const OpenFile stream(path, O_WRONLY);
  if (stream.number() < 0) return systemFailure(errno);
  return writeOpen(stream.number(), contents);
}

Result<QByteArray> inReading(const QString& name, Result<QByteArray> read) {
  if (read) return read;
  return failureIn(QStringLiteral("cannot read ") + name, read.error());
}

Result<void> inWriting(const QString& name, const Result<void>& written) {
  if (written) return written;
  return failureIn(QStringLiteral("cannot write ") + name, written.error());
}

}  // namespace

Result<QByteArray> File::readAll(const QString& path, qsizetype maxBytes, const HeadCheck& check) {
  return inReading(shown(path), openAndRead(path, maxBytes, check));
}

Result<QByteArray> File::readStandardInput(qsizetype maxBytes, const HeadCheck& check) {
  return inReading(QStringLiteral("standard input"), readOpen(STDIN_FILENO, maxBytes, check));
}

Result<void> File::writeAtomically(const QString& path, const QByteArray& bytes) {
  return writeAtomically(path, [&](QIODevice* device) -> Result<void> {
    device->write(bytes);
    return {};
  });
}

Result<void> File::writeAtomically(const QString& path, const Contents& contents) {
  return inWriting(shown(path), openAndWrite(path, contents));
}

Result<void> File::writeStandardOutput(const Contents& contents) {
  return inWriting(QStringLiteral("standard output"), writeOpen(STDOUT_FILENO, contents));
}

}  // namespace kelvar
