#pragma once

#include <latch>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace kelvar {

/// A thread that runs `work`, or one that is not joinable where the system has none to give. Its
/// caller then does the work alone.
template <typename Work>
std::thread tryThread(Work&& work) {
  try {
    return std::thread(std::forward<Work>(work));
  } catch (const std::system_error&) {
    return {};
  }
}

/// Whether the system has so many threads to give beside those that there are: to be asked before
/// what would wait forever for one that it did not get.
inline bool canHaveThreads(int count) {
  std::latch end(1);
  std::vector<std::thread> threads;
  threads.reserve(size_t(count));
  while (threads.size() < size_t(count)) {
    std::thread thread = tryThread([&] { end.wait(); });
    if (!thread.joinable()) break;
    threads.push_back(std::move(thread));
  }
  end.count_down();
  for (std::thread& thread : threads) thread.join();
  return threads.size() == size_t(count);
}

}  // namespace kelvar
