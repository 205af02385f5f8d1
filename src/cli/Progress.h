#pragma once

#include <atomic>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace kelvar::cli {

/// Shows the current stage on standard error, if that is a terminal and the work has taken more
/// than a second. The line is erased when the work is done.
class Progress {
 public:
  Progress();
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  /// `stage` is a string literal such as "reading".
  void setStage(const char* stage) { stage_ = stage; }

 private:
  void show(std::stop_token stop);

  std::atomic<const char*> stage_ = "starting";
  std::mutex mutex_;
  std::condition_variable_any wake_;
  std::jthread thread_;
};

}  // namespace kelvar::cli
