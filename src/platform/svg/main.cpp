// kelvar-svg, which the library starts for each SVG: draws the design in kDesign into kPixels,
// within limits that end it and not the caller. Takes the processor seconds and the bytes of memory
// that it may use.

#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QByteArray>
#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <new>

#include "platform/svg/SvgDrawing.h"
#include "platform/svg/SvgTalk.h"

namespace {

using kelvar::svg::Report;

bool say(const Report& report) {
  return send(kelvar::svg::kSocket, &report, sizeof report, MSG_NOSIGNAL) == sizeof report;
}

[[noreturn]] void fail(const char* sentence) {
  Report report;
  std::snprintf(report.sentence, sizeof report.sentence, "%s", sentence);
  say(report);
  _exit(EXIT_FAILURE);
}

[[noreturn]] void failForMemory() { fail("the SVG takes too much memory to draw"); }

void limit(decltype(RLIMIT_CPU) what, rlim_t most) {
  rlimit now{};
  getrlimit(what, &now);
  now.rlim_cur = std::min(now.rlim_max, most);
  setrlimit(what, &now);
}

/// Data, not address space: the libraries and the shared pixels take their share of that. What a
/// sanitizer needs of it is beyond any limit.
void setLimits(rlim_t seconds, [[maybe_unused]] rlim_t bytes) {
  limit(RLIMIT_CORE, 0);
  limit(RLIMIT_CPU, seconds);
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
  limit(RLIMIT_DATA, bytes);
#endif
  std::set_new_handler(failForMemory);
  // Qt's containers do not ask that handler.
  std::set_terminate(failForMemory);
}

/// However that ends: a drawing that nobody waits for would take its time all the same.
void endWithWhoAsked() {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  char none;
  if (recv(kelvar::svg::kSocket, &none, 1, MSG_PEEK | MSG_DONTWAIT) == 0) _exit(EXIT_FAILURE);
}

/// Null when there is none of that size.
uchar* mapped(int file, size_t bytes, int access) {
  void* const memory = mmap(nullptr, bytes, access, MAP_SHARED, file, 0);
  return memory == MAP_FAILED ? nullptr : static_cast<uchar*>(memory);
}

QByteArray design() {
  struct stat file {};
  fstat(kelvar::svg::kDesign, &file);
  const auto bytes = static_cast<size_t>(file.st_size);
  const uchar* const memory = mapped(kelvar::svg::kDesign, bytes, PROT_READ);
  if (!memory) failForMemory();
  return QByteArray::fromRawData(reinterpret_cast<const char*>(memory), qsizetype(bytes));
}

QImage pixels() {
  kelvar::svg::Wanted wanted;
  if (recv(kelvar::svg::kSocket, &wanted, sizeof wanted, 0) != sizeof wanted) _exit(EXIT_FAILURE);
  const auto rowBytes = qsizetype{wanted.width} * 4;
  uchar* const memory = mapped(kelvar::svg::kPixels, size_t(rowBytes) * size_t(wanted.height),
                               PROT_READ | PROT_WRITE);
  if (!memory) failForMemory();
  return {memory, wanted.width, wanted.height, rowBytes, QImage::Format_ARGB32_Premultiplied};
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  endWithWhoAsked();
  setLimits(std::strtoull(argv[1], nullptr, 10), std::strtoull(argv[2], nullptr, 10));
  qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
  kelvar::SvgDrawing drawing;
  if (const char* const problem = drawing.load(design())) fail(problem);
  const QSizeF size = drawing.naturalSize();
  if (!say({Report::Size, size.width(), size.height(), ""})) return EXIT_FAILURE;
  QImage image = pixels();
  drawing.draw(&image);
  say({Report::Drawn, 0, 0, ""});
  // What is left to tear down is the system's.
  _exit(EXIT_SUCCESS);
}
