#pragma once

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

#include "platform/RunLoop.h"

namespace kelvar {

/// A run loop whose time the test moves.
class ManualRunLoop : public RunLoop {
 public:
  double mediaTime() const override { return now_; }

  Delayed performAfterDelay(double seconds, std::function<void()> work) override {
    const auto entry = std::make_shared<std::function<void()>>(std::move(work));
    due_.push_back({now_ + seconds, entry});
    return entry;
  }

  /// Does what is due meanwhile, in its order.
  void advance(double seconds) {
    const double end = now_ + seconds;
    const auto isEarlier = [](const auto& a, const auto& b) { return a.first < b.first; };
    while (true) {
      const auto next = std::min_element(due_.begin(), due_.end(), isEarlier);
      if (next == due_.end() || next->first > end) break;
      now_ = next->first;
      const auto work = next->second.lock();
      due_.erase(next);
      if (work) (*work)();
    }
    now_ = end;
  }

 private:
  double now_ = 1000;
  std::vector<std::pair<double, std::weak_ptr<std::function<void()>>>> due_;
};

}  // namespace kelvar
