#include "platform/SvgProcess.h"

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

#include "platform/LibraryBeside.h"

namespace kelvar {
namespace {

const auto kNoMemory = QStringLiteral("there is not enough memory for it");

bool writeAll(int file, const QByteArray& bytes) {
  for (qsizetype at = 0; at < bytes.size();) {
    const ssize_t count = ::write(file, bytes.constData() + at, size_t(bytes.size() - at));
    if (count < 0 && errno != EINTR) return false;
    at += std::max(count, ssize_t{0});
  }
  return true;
}

OwnFile sharedMemory() { return OwnFile(memfd_create("kelvar-svg", MFD_CLOEXEC)); }

/// What a new process takes over of this one: the files that it is for, and no signals that are
/// ignored or held back here.
class Beginning {
 public:
  Beginning(int socket, int pixels, int design) {
    posix_spawn_file_actions_init(&files_);
    posix_spawn_file_actions_adddup2(&files_, socket, svg::kSocket);
    posix_spawn_file_actions_adddup2(&files_, pixels, svg::kPixels);
    posix_spawn_file_actions_addopen(&files_, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_adddup2(&files_, design, svg::kDesign);
    posix_spawn_file_actions_addclosefrom_np(&files_, svg::kDesign + 1);
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

SvgProcess::~SvgProcess() {
  if (child_ == 0) return;
  kill(child_, SIGKILL);
  while (waitpid(child_, nullptr, 0) < 0 && errno == EINTR) continue;
}

QString SvgProcess::start(const QByteArray& design) {
  const OwnFile file = sharedMemory();
  pixels_ = sharedMemory();
  int ends[2] = {-1, -1};
  socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends);
  socket_ = OwnFile(ends[0]);
  const OwnFile theirs(ends[1]);
  const bool isReady = file && pixels_ && socket_ && theirs && writeAll(file.number(), design);
  const int problem = isReady ? spawn(theirs, file) : errno;
  if (problem == 0) return {};
  return QStringLiteral("what draws SVGs cannot be started (%1)").arg(qt_error_string(problem));
}

int SvgProcess::spawn(const OwnFile& socket, const OwnFile& design) {
  const Beginning beginning(socket.number(), pixels_.number(), design.number());
  std::string program = fileBeside(KELVAR_SVG_PROGRAM, KELVAR_SVG_FOLDER);
  std::string seconds = std::to_string(limits_.time.count());
  std::string bytes = std::to_string(limits_.memory);
  char* const arguments[] = {program.data(), seconds.data(), bytes.data(), nullptr};
  return posix_spawn(&child_, program.c_str(), beginning.files(), beginning.signals(), arguments,
                     environ);
}

QSizeF SvgProcess::naturalSize(QString* error) {
  const svg::Report size = report(svg::Report::Size, error);
  return {size.width, size.height};
}

QImage SvgProcess::draw(const QSize& size, QString* error) {
  const size_t rowBytes = size_t(size.width()) * 4, bytes = rowBytes * size_t(size.height());
  void* const memory =
      ftruncate(pixels_.number(), off_t(bytes)) == 0
          ? mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_SHARED, pixels_.number(), 0)
          : MAP_FAILED;
  if (memory == MAP_FAILED) {
    *error = kNoMemory;
    return {};
  }
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
  const svg::Wanted wanted{size.width(), size.height()};
  send(socket_.number(), &wanted, sizeof wanted, MSG_NOSIGNAL);
  report(svg::Report::Drawn, error);
  return error->isEmpty() ? image : QImage();
}

svg::Report SvgProcess::report(svg::Report::Kind kind, QString* error) {
  pollfd ready{socket_.number(), POLLIN, 0};
  int found = -1;
  do {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline_ - Clock::now());
    found = poll(&ready, 1, int(std::max<qint64>(left.count(), 0)));
  } while (found < 0 && errno == EINTR);
  svg::Report report;
  if (found == 0) {
    *error = takesTooLong();
  } else if (recv(socket_.number(), &report, sizeof report, MSG_DONTWAIT) != sizeof report) {
    *error = ending();
  } else if (report.kind == svg::Report::Failed) {
    *error = QString::fromUtf8(report.sentence, qstrnlen(report.sentence, sizeof report.sentence));
  } else if (report.kind != kind) {
    *error = QStringLiteral("the SVG cannot be drawn");
  }
  return report;
}

QString SvgProcess::ending() {
  const pid_t child = std::exchange(child_, 0);
  int status = 0;
  while (waitpid(child, &status, 0) < 0 && errno == EINTR) continue;
  const int signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
  if (signal == SIGXCPU) return takesTooLong();
  return QStringLiteral(
      "the SVG ended what draws it: it takes too much memory, or nests its elements too deeply");
}

QString SvgProcess::takesTooLong() const {
  return QStringLiteral("the SVG takes longer than %1 s to draw").arg(limits_.time.count());
}

}  // namespace kelvar
