#include "pixels/threads/ThreadPool.h"

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

#include "pixels/threads/spawnThreadOrRunInline.h"

namespace kelvar {
namespace {

/// One call's tasks, handed out by number.
struct Job {
  const std::function<void(int)>* task;
  int count;
  std::atomic<int> next{0};
  int helpers = 0;  ///< Workers that are queued or running; guarded by the pool's lock.

  void run() {
    for (int i = next++; i < count; i = next++) (*task)(i);
  }
};

/// More hardly help, and each has a stack and buffers of its own.
constexpr int kMaxThreads = 32;

thread_local bool insideTask = false;

std::atomic<int> limit{kMaxThreads};

class Pool {
 public:
  /// Never destroyed: workers may still sleep in it when the process ends.
  static Pool& shared() {
    static Pool* const pool = std::make_unique<Pool>().release();
    return *pool;
  }

  void run(Job* job, int helpers) {
    {
      const std::lock_guard lock(mutex_);
      helpers = grownTo(helpers);
      job->helpers = helpers;
      queue_.insert(queue_.end(), size_t(helpers), job);
    }
    wake_.notify_all();
    job->run();
    std::unique_lock lock(mutex_);
    // All tasks are taken: workers that have not started are not needed.
    job->helpers -= int(std::erase(queue_, job));
    done_.wait(lock, [job] { return job->helpers == 0; });
  }

 private:
  /// Starts workers until there are `wanted` or the system refuses. How many there are, at most
  /// `wanted`.
  int grownTo(int wanted) {
    workers_.reserve(size_t(wanted));
    while (int(workers_.size()) < wanted) {
      std::thread worker = spawnThreadOrRunInline([this] { work(); });
      if (!worker.joinable()) break;
      workers_.push_back(std::move(worker));
    }
    return std::min(wanted, int(workers_.size()));
  }

  void work() {
    insideTask = true;
    std::unique_lock lock(mutex_);
    for (;;) {
      wake_.wait(lock, [this] { return !queue_.empty(); });
      Job* const job = queue_.back();
      queue_.pop_back();
      lock.unlock();
      job->run();
      lock.lock();
      if (--job->helpers == 0) done_.notify_all();
    }
  }

  std::mutex mutex_;
  std::condition_variable wake_, done_;
  std::vector<Job*> queue_;
  std::vector<std::thread> workers_;
};

}  // namespace

void limitThreads(int threads) { limit = threads > 0 ? threads : kMaxThreads; }

int allowedThreads(int threads) {
  if (insideTask) return 1;
  if (threads <= 0) threads = int(std::max(1u, std::thread::hardware_concurrency()));
  return std::min({threads, limit.load(), kMaxThreads});
}

void parallelFor(int count, int threads, const std::function<void(int)>& task) {
  const int helpers = std::min(allowedThreads(threads), count) - 1;
  Job job{&task, count};
  if (helpers <= 0) return job.run();
  insideTask = true;
  Pool::shared().run(&job, helpers);
  insideTask = false;
}

}  // namespace kelvar
