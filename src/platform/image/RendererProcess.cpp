#include "platform/image/RendererProcess.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <string>

#include "platform/QtError.h"
#include "platform/SharedLibrary.h"

namespace kelvar {
namespace {

bool writeAll(int file, const QByteArray& bytes) {
  for (qsizetype at = 0; at < bytes.size();) {
    const ssize_t count = ::write(file, bytes.constData() + at, size_t(bytes.size() - at));
    if (count < 0 && errno != EINTR) return false;
    at += std::max(count, ssize_t{0});
  }
  return true;
}

OwnFile sharedMemory() { return OwnFile(memfd_create("kelvar-renderer", MFD_CLOEXEC)); }

/// What a new process inherits: the files that it needs, but no ignored or blocked signals.
class Beginning {
 public:
  Beginning(int socket, int output, int design) {
    posix_spawn_file_actions_init(&files_);
    posix_spawn_file_actions_adddup2(&files_, socket, renderer::kSocket);
    posix_spawn_file_actions_adddup2(&files_, output, renderer::kOutput);
    posix_spawn_file_actions_addopen(&files_, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_adddup2(&files_, design, renderer::kDesign);
    posix_spawn_file_actions_addclosefrom_np(&files_, renderer::kDesign + 1);
    posix_spawnattr_init(&signals_);
    sigset_t none, all;
    sigemptyset(&none);
    sigfillset(&all);
    posix_spawnattr_setsigmask(&signals_, &none);
    posix_spawnattr_setsigdefault(&signals_, &all);
    posix_spawnattr_setflags(&signals_, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
  }
  ~Beginning() {
    posix_spawn_file_actions_destroy(&files_);
    posix_spawnattr_destroy(&signals_);
  }
  Beginning(const Beginning&) = delete;
  Beginning& operator=(const Beginning&) = delete;

  const posix_spawn_file_actions_t* files() const { return &files_; }
  const posix_spawnattr_t* signals() const { return &signals_; }

 private:
  posix_spawn_file_actions_t files_;
  posix_spawnattr_t signals_;
};

}  // namespace

OwnFile::OwnFile(int file) {
  constexpr int kFirst = 10;
  if (file < 0) return;
  file_ = fcntl(file, F_DUPFD_CLOEXEC, kFirst);
  const int problem = errno;
  ::close(file);
  errno = problem;
}

OwnFile& OwnFile::operator=(OwnFile&& other) noexcept {
  std::swap(file_, other.file_);
  return *this;
}

void OwnFile::close() {
  if (file_ >= 0) ::close(file_);
  file_ = -1;
}

RendererProcess::~RendererProcess() {
  if (child_ == 0) return;
  kill(child_, SIGKILL);
  while (waitpid(child_, nullptr, 0) < 0 && errno == EINTR) continue;
}

Result<void> RendererProcess::start(const QByteArray& design) {
  const OwnFile file = sharedMemory();
  output_ = sharedMemory();
  int ends[2] = {-1, -1};
  socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends);
  socket_ = OwnFile(ends[0]);
  const OwnFile theirs(ends[1]);
  const bool isReady = file && output_ && socket_ && theirs && writeAll(file.number(), design);
  const int problem = isReady ? spawn(theirs, file) : errno;
  if (problem == 0) return {};
  return failure(Error::Kind::Io,
                 QStringLiteral("the %1 renderer cannot be started (%2)")
                     .arg(QLatin1StringView(renderer_.format), qt_error_string(problem)));
}

int RendererProcess::spawn(const OwnFile& socket, const OwnFile& design) {
  const Beginning beginning(socket.number(), output_.number(), design.number());
  std::string program = fileBeside(renderer_.program, KELVAR_RENDERER_FOLDER);
  std::string seconds = std::to_string(limits_.time.count());
  std::string bytes = std::to_string(limits_.memory);
  char* const arguments[] = {program.data(), seconds.data(), bytes.data(), nullptr};
  return posix_spawn(&child_, program.c_str(), beginning.files(), beginning.signals(), arguments,
                     environ);
}

Result<renderer::Report> RendererProcess::open() { return report(renderer::Report::Opened); }

Result<QImage> RendererProcess::draw(const QSize& size) {
  const size_t rowBytes = size_t(size.width()) * 4, bytes = rowBytes * size_t(size.height());
  void* const memory =
      ftruncate(output_.number(), off_t(bytes)) == 0
          ? mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_SHARED, output_.number(), 0)
          : MAP_FAILED;
  if (memory == MAP_FAILED)
    return failure(Error::Kind::TooLarge, "there is not enough memory for it");
  struct Mapping {
    void* memory;
    size_t bytes;
  };
  const QImage image(
      static_cast<uchar*>(memory), size.width(), size.height(), qsizetype(rowBytes),
      QImage::Format_ARGB32_Premultiplied,
      [](void* info) {
        const std::unique_ptr<Mapping> mapping(static_cast<Mapping*>(info));
        munmap(mapping->memory, mapping->bytes);
      },
      new Mapping{memory, bytes});
  return request({renderer::Wanted::Pixels, size.width(), size.height(), 0})
      .map([&](const renderer::Report&) { return image; });
}

Result<QByteArray> RendererProcess::data(const renderer::Wanted& wanted) {
  constexpr int64_t kMaxBytes = int64_t{64} << 20;
  const auto done = request(wanted);
  if (!done) return tl::unexpected(done.error());
  QByteArray bytes;
  if (done->bytes >= 0 && done->bytes <= kMaxBytes) bytes.resize(qsizetype(done->bytes));
  if (bytes.size() == done->bytes &&
      pread(output_.number(), bytes.data(), size_t(bytes.size()), 0) == bytes.size()) {
    return bytes;
  }
  return failure(Error::Kind::TooLarge, "the " + format() + " is too large");
}

Result<renderer::Report> RendererProcess::request(const renderer::Wanted& wanted) {
  send(socket_.number(), &wanted, sizeof wanted, MSG_NOSIGNAL);
  return report(renderer::Report::Done);
}

Result<renderer::Report> RendererProcess::report(renderer::Report::Kind kind) {
  const auto deadline = Clock::now() + limits_.time;
  pollfd ready{socket_.number(), POLLIN, 0};
  int found = -1;
  do {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
    found = poll(&ready, 1, int(std::max<qint64>(left.count(), 0)));
  } while (found < 0 && errno == EINTR);
  if (found == 0) return timeExceeded();
  renderer::Report report;
  if (recv(socket_.number(), &report, sizeof report, MSG_DONTWAIT) != sizeof report) {
    return unexpectedEnd();
  }
  if (report.kind == kind) return report;
  if (report.kind == renderer::Report::OutOfMemory) {
    return failure(Error::Kind::TooLarge, "the " + format() + " takes too much memory to draw");
  }
  if (report.kind != renderer::Report::Failed) {
    return failure(Error::Kind::Damaged, "the " + format() + " cannot be drawn");
  }
  return failure(Error::Kind::Damaged,
                 std::string(report.message, qstrnlen(report.message, sizeof report.message)));
}

tl::unexpected<Error> RendererProcess::unexpectedEnd() {
  const pid_t child = std::exchange(child_, 0);
  int status = 0;
  while (waitpid(child, &status, 0) < 0 && errno == EINTR) continue;
  const int signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
  if (signal == SIGXCPU) return timeExceeded();
  return failure(Error::Kind::TooLarge,
                 "the " + format() +
                     " stopped the renderer: it takes too much memory, or nests its elements too "
                     "deeply");
}

tl::unexpected<Error> RendererProcess::timeExceeded() const {
  return failure(Error::Kind::TooLarge, "the " + format() + " takes longer than " +
                                            std::to_string(limits_.time.count()) + " s to draw");
}

}  // namespace kelvar
