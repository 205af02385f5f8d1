#include "pixels/threads/ThreadPool.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

namespace kelvar {
namespace {

TEST(ThreadPoolTest, RunsEachTaskOnceEvenNestedAndConcurrently) {
  const auto everyOnce = [](int count, int threads) {
    std::vector<std::atomic<int>> hits(size_t(count) * 4);
    parallelFor(count, threads, [&](int i) {
      parallelFor(4, threads, [&](int k) { ++hits[size_t(i) * 4 + size_t(k)]; });
    });
    for (const auto& hit : hits) EXPECT_EQ(hit, 1);
  };
  for (const int threads : {0, 1, 2, 7, 1000}) {
    for (const int count : {0, 1, 3, 500}) everyOnce(count, threads);
  }
  std::vector<std::thread> callers;
  for (int i = 0; i < 4; ++i) {
    callers.emplace_back([&] {
      for (int k = 0; k < 50; ++k) everyOnce(20, 3);
    });
  }
  for (std::thread& caller : callers) caller.join();
}

TEST(ThreadPoolTest, LimitHoldsForWhateverACallerAsksFor) {
  const auto others = [](int threads) {
    std::atomic<int> others = 0;
    const std::thread::id own = std::this_thread::get_id();
    parallelFor(200, threads, [&](int) {
      others += std::this_thread::get_id() != own;
      std::this_thread::yield();
    });
    return others.load();
  };
  limitThreads(1);
  for (const int threads : {0, 1, 8}) {
    EXPECT_EQ(allowedThreads(threads), 1);
    EXPECT_EQ(others(threads), 0);
  }
  limitThreads(0);
  EXPECT_EQ(allowedThreads(8), 8);
  EXPECT_EQ(allowedThreads(1000), 32);
}

}  // namespace
}  // namespace kelvar
