#include "platform/image/renderer/RendererChild.h"

#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QtGlobal>
#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <new>

namespace kelvar::renderer {
namespace {

[[noreturn]] void failForMemory() {
  say({.kind = Report::OutOfMemory});
  _exit(EXIT_FAILURE);
}

void limit(decltype(RLIMIT_CPU) what, rlim_t most) {
  rlimit now{};
  getrlimit(what, &now);
  now.rlim_cur = std::min(now.rlim_max, most);
  setrlimit(what, &now);
}

/// Limits data, not address space, which the libraries and the shared pixels use as well. A
/// sanitizer needs more than any limit.
void setLimits(rlim_t seconds, [[maybe_unused]] rlim_t bytes) {
  limit(RLIMIT_CORE, 0);
  limit(RLIMIT_CPU, seconds);
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
  limit(RLIMIT_DATA, bytes);
#endif
  std::set_new_handler(failForMemory);
  // Qt's containers do not call the new handler.
  std::set_terminate(failForMemory);
}

/// Ends this process with its parent, however that ends: the drawing would use its time in vain.
void endWithParent() {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  char none;
  if (recv(kSocket, &none, 1, MSG_PEEK | MSG_DONTWAIT) == 0) _exit(EXIT_FAILURE);
}

/// Null when the file cannot be mapped.
uchar* mapped(int file, size_t bytes, int access) {
  void* const memory = mmap(nullptr, bytes, access, MAP_SHARED, file, 0);
  return memory == MAP_FAILED ? nullptr : static_cast<uchar*>(memory);
}

}  // namespace

bool begin(int argc, char** argv) {
  if (argc != 3) return false;
  endWithParent();
  setLimits(std::strtoull(argv[1], nullptr, 10), std::strtoull(argv[2], nullptr, 10));
  qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
  return true;
}

QByteArray design() {
  struct stat file {};
  fstat(kDesign, &file);
  const auto bytes = static_cast<size_t>(file.st_size);
  const uchar* const memory = mapped(kDesign, bytes, PROT_READ);
  if (!memory) failForMemory();
  return QByteArray::fromRawData(reinterpret_cast<const char*>(memory), qsizetype(bytes));
}

void say(const Report& report) {
  if (send(kSocket, &report, sizeof report, MSG_NOSIGNAL) != sizeof report) _exit(EXIT_FAILURE);
}

void fail(const char* message) {
  Report report;
  std::snprintf(report.message, sizeof report.message, "%s", message);
  say(report);
  _exit(EXIT_FAILURE);
}

Wanted nextWanted() {
  Wanted wanted;
  // The system cleans up faster.
  if (recv(kSocket, &wanted, sizeof wanted, 0) != sizeof wanted) _exit(EXIT_SUCCESS);
  return wanted;
}

QImage outputImage(const Wanted& wanted) {
  const auto rowBytes = qsizetype{wanted.width} * 4;
  uchar* const memory =
      mapped(kOutput, size_t(rowBytes) * size_t(wanted.height), PROT_READ | PROT_WRITE);
  if (!memory) failForMemory();
  return {memory, wanted.width, wanted.height, rowBytes, QImage::Format_ARGB32_Premultiplied};
}

void sayData(const QByteArray& bytes) {
  if (ftruncate(kOutput, bytes.size()) != 0 ||
      pwrite(kOutput, bytes.constData(), size_t(bytes.size()), 0) != bytes.size()) {
    failForMemory();
  }
  say({.kind = Report::Done, .bytes = bytes.size()});
}

}  // namespace kelvar::renderer
