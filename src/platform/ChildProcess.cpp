#include "platform/ChildProcess.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <vector>

#include "platform/Permissions.h"
#include "platform/QtError.h"
#include "platform/files/FileName.h"

namespace kelvar {
namespace {

/// A pipe whose ends other programs do not inherit.
struct Pipe {
  int ends[2] = {-1, -1};

  Pipe() {
    if (pipe2(ends, O_CLOEXEC) != 0) ends[0] = ends[1] = -1;
  }
  ~Pipe() {
    closeEnd(0);
    closeEnd(1);
  }
  Pipe(const Pipe&) = delete;
  Pipe& operator=(const Pipe&) = delete;

  void closeEnd(int end) {
    if (ends[end] >= 0) close(ends[end]);
    ends[end] = -1;
  }
};

/// Returns 0, or the system's error number.
int launch(const QList<QByteArray>& words, const QByteArray& directory, int output, pid_t* child) {
  std::vector<char*> arguments;
  for (const QByteArray& word : words) arguments.push_back(const_cast<char*>(word.constData()));
  arguments.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, output, STDOUT_FILENO);
  posix_spawn_file_actions_adddup2(&actions, output, STDERR_FILENO);
  posix_spawn_file_actions_addchdir_np(&actions, directory.constData());
  const int problem =
      posix_spawn(child, arguments[0], &actions, nullptr, arguments.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  return problem;
}

QByteArray readToEnd(int file) {
  QByteArray bytes;
  char buffer[4096];
  while (true) {
    const ssize_t count = read(file, buffer, sizeof buffer);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return bytes;
    bytes.append(buffer, count);
  }
}

}  // namespace

Result<QByteArray> ChildProcess::run(const QStringList& words, const QString& directory) {
  const Result<void> may = Permissions::check(Permissions::Kind::Run, words.first());
  if (!may) return tl::unexpected(may.error());
  QList<QByteArray> encoded;
  for (const QString& word : words) encoded.append(fileNameBytes(word));
  Pipe pipe;
  pid_t child = 0;
  const int problem =
      pipe.ends[1] < 0 ? errno : launch(encoded, fileNameBytes(directory), pipe.ends[1], &child);
  if (problem != 0) {
    return failure(Error::Kind::Io, QStringLiteral("cannot launch %1 in \"%2\": %3")
                                        .arg(words.first(), directory, qt_error_string(problem)));
  }
  pipe.closeEnd(1);
  while (waitpid(child, nullptr, 0) < 0 && errno == EINTR) continue;
  return readToEnd(pipe.ends[0]);
}

}  // namespace kelvar
