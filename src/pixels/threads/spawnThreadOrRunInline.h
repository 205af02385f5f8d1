#pragma once

#include <latch>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace kelvar {

/// Starts a thread that runs `work`. If the system provides no more threads, the returned thread is
/// not joinable, and the caller must do the work itself.
template <typename Work>
std::thread spawnThreadOrRunInline(Work&& work) {
  try {
    return std::thread(std::forward<Work>(work));
  } catch (const std::system_error&) {
    return {};
  }
}

/// Whether the system provides `count` more threads. Call it before code that would wait forever
/// for a thread that failed to start.
inline bool canHaveThreads(int count) {
  std::latch end(1);
  std::vector<std::thread> threads;
  threads.reserve(size_t(count));
  while (threads.size() < size_t(count)) {
    std::thread thread = spawnThreadOrRunInline([&] { end.wait(); });
    if (!thread.joinable()) break;
    threads.push_back(std::move(thread));
  }
  end.count_down();
  for (std::thread& thread : threads) thread.join();
  return threads.size() == size_t(count);
}

}  // namespace kelvar
