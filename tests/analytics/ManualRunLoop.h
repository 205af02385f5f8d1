#pragma once

#include <algorithm>
#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include "platform/RunLoop.h"

namespace kelvar {

/// A run loop whose clock the test advances.
class ManualRunLoop : public RunLoop {
 public:
  double mediaTime() const override { return now_; }

  Delayed performAfterDelay(double seconds, std::function<void()> work) override {
    const auto token = std::make_shared<int>();
    due_.push_back({now_ + seconds, token, std::move(work)});
    return token;
  }

  /// Runs the tasks that become due meanwhile, in order.
  void advance(double seconds) {
    const double end = now_ + seconds;
    const auto isEarlier = [](const Due& a, const Due& b) { return a.time < b.time; };
    while (true) {
      const auto next = std::min_element(due_.begin(), due_.end(), isEarlier);
      if (next == due_.end() || next->time > end) break;
      now_ = next->time;
      const Due due = std::move(*next);
      due_.erase(next);
      if (!due.token.expired()) due.work();
    }
    now_ = end;
  }

 private:
  struct Due {
    double time;
    std::weak_ptr<void> token;
    std::function<void()> work;
  };

  double now_ = 1000;
  std::vector<Due> due_;
};

}  // namespace kelvar
