#include "geometry/warp/ThreadPool.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

namespace kelvar::warp {
namespace {

TEST(ThreadPool, RunsEachTaskOnceAlsoNestedAndFromSeveralThreads) {
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

}  // namespace
}  // namespace kelvar::warp
