#include "cli/Progress.h"

#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <system_error>

namespace kelvar::cli {

Progress::Progress() {
  if (isatty(STDERR_FILENO) == 0) return;
  try {
    thread_ = std::jthread([this](const std::stop_token& stop) { show(stop); });
  } catch (const std::system_error&) {
    // The system has no thread to give, and the work can be done without.
  }
}

Progress::~Progress() = default;

void Progress::show(std::stop_token stop) {
  constexpr auto kPatience = std::chrono::seconds(1);
  const auto stopped = [&] { return stop.stop_requested(); };
  int seconds = 0;
  std::unique_lock lock(mutex_);
  while (!wake_.wait_for(lock, stop, kPatience, stopped)) {
    std::fprintf(stderr, "\r\x1b[Kkelvar: %s, %d s", stage_.load(), ++seconds);
    std::fflush(stderr);
  }
  if (seconds > 0) std::fputs("\r\x1b[K", stderr);
}

}  // namespace kelvar::cli
