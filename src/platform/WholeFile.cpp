#include "platform/WholeFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>

#include "platform/FileName.h"
#include "platform/FileReplacement.h"
#include "platform/FileSink.h"

namespace kelvar {
namespace {

/// An open file of the system's.
class OpenFile {
 public:
  /// The names that the system is told end at a zero character.
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
QString openingProblem(const QString& path, int errorNumber) {
  if (path.isEmpty()) return QStringLiteral("the path is empty");
  if (errorNumber == EACCES) return QStringLiteral("its permissions do not let you read it");
  if (errorNumber != ENOENT) return systemWords(errorNumber);
  std::error_code error;
  const auto target = std::filesystem::read_symlink(filePath(path), error);
  if (error) return QStringLiteral("there is no such file");
  return QStringLiteral("it is a link to %1, which does not exist")
      .arg(fileNameFromBytes(target.native()));
}

/// Why it could not be read, or none.
QString readOpen(int file, qsizetype most, const WholeFile::Objection& objection,
                 QByteArray* bytes) {
  struct stat facts {};
  if (::fstat(file, &facts) != 0) return systemWords(errno);
  if (S_ISDIR(facts.st_mode)) return QStringLiteral("it is a folder");
  const qsizetype announced = std::clamp<qsizetype>(facts.st_size, 0, most) + 1;
  bytes->resize(std::max(announced, WholeFile::kHeadBytes));
  bool isLookedAt = !objection;
  for (qsizetype size = 0;;) {
    if (size == bytes->size()) bytes->resize(2 * size);
    const ssize_t part = ::read(file, bytes->data() + size, size_t(bytes->size() - size));
    if (part < 0 && errno == EINTR) continue;
    if (part < 0) return systemWords(errno);
    size += part;
    if (!isLookedAt && (part == 0 || size >= WholeFile::kHeadBytes)) {
      const QString problem = objection(bytes->first(std::min(size, WholeFile::kHeadBytes)));
      if (!problem.isEmpty()) return problem;
      isLookedAt = true;
    }
    if (size > most) return QStringLiteral("it is larger than %1 MiB").arg(most >> 20);
    if (part > 0) continue;
    bytes->resize(size);
    return {};
  }
}

QString readProblem(const QString& path, qsizetype most, const WholeFile::Objection& objection,
                    QByteArray* bytes) {
  const OpenFile file(path, O_RDONLY);
  return file.number() < 0 ? openingProblem(path, errno)
                           : readOpen(file.number(), most, objection, bytes);
}

/// Why it could not be written, or none.
QString writeOpen(int file, const WholeFile::Contents& contents) {
  FileSink sink(file);
  const QString problem = contents(&sink);
  return problem.isEmpty() && sink.errorNumber() != 0 ? systemWords(sink.errorNumber()) : problem;
}

QString replace(const QString& path, const WholeFile::Contents& contents) {
  FileReplacement replacement(path);
  QString problem = replacement.begin();
  if (problem.isEmpty()) problem = writeOpen(replacement.file(), contents);
  return problem.isEmpty() ? replacement.finish() : problem;
}

QString writeProblem(const QString& path, const WholeFile::Contents& contents) {
  if (path.isEmpty()) return QStringLiteral("the path is empty");
  if (!isFileStream(path)) return replace(path, contents);
  const OpenFile stream(path, O_WRONLY);
  return stream.number() < 0 ? systemWords(errno) : writeOpen(stream.number(), contents);
}

/// Whether there is no problem; else the sentence.
bool tell(const QString& problem, const char* what, const QString& name, QString* error) {
  if (problem.isEmpty()) return true;
  *error = QStringLiteral("cannot %1 %2: %3").arg(QLatin1String(what), name, problem);
  return false;
}

}  // namespace

bool WholeFile::read(const QString& path, qsizetype most, QByteArray* bytes, QString* error,
                     const Objection& objection) {
  return tell(readProblem(path, most, objection, bytes), "read", shown(path), error);
}

bool WholeFile::readStandardInput(qsizetype most, QByteArray* bytes, QString* error,
                                  const Objection& objection) {
  const QString problem = readOpen(STDIN_FILENO, most, objection, bytes);
  return tell(problem, "read", QStringLiteral("standard input"), error);
}

bool WholeFile::write(const QString& path, const QByteArray& bytes, QString* error) {
  const auto contents = [&](QIODevice* device) {
    device->write(bytes);
    return QString();
  };
  return write(path, contents, error);
}

bool WholeFile::write(const QString& path, const Contents& contents, QString* error) {
  return tell(writeProblem(path, contents), "write", shown(path), error);
}

bool WholeFile::writeStandardOutput(const Contents& contents, QString* error) {
  return tell(writeOpen(STDOUT_FILENO, contents), "write", QStringLiteral("standard output"),
              error);
}

}  // namespace kelvar
