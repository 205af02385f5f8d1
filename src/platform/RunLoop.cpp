#include "platform/RunLoop.h"

#include <QObject>
#include <QTimer>
#include <algorithm>
#include <chrono>
#include <exception>
#include <limits>
#include <utility>

#include "platform/Log.h"
#include "platform/PendingTasks.h"

namespace kelvar {
namespace {

void perform(const std::function<void()>& work) {
  try {
    work();
  } catch (const std::exception& exception) {
    logLine(u"RunLoop: %@", {QString::fromUtf8(exception.what())});
  }
}

/// Pending until it is done or canceled: Qt keeps a canceled timer until it would have been due.
struct PutOff {
  QObject context;
  std::shared_ptr<void> pending = PendingTasks::acquire();
};

class QtRunLoop : public RunLoop {
 public:
  double mediaTime() const override {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
  }

  Delayed performAfterDelay(double seconds, std::function<void()> work) override {
    const double longest = std::numeric_limits<int>::max();
    const int milliseconds = int(std::clamp(seconds * 1000, 0.0, longest));
    const auto put = std::make_shared<PutOff>();
    QTimer::singleShot(milliseconds, Qt::PreciseTimer, &put->context,
                       [work = std::move(work), weak = std::weak_ptr(put)]() mutable {
                         // What it holds ends here, not within Qt's own cleaning up.
                         perform(std::exchange(work, nullptr));
                         if (const auto done = weak.lock()) done->pending.reset();
                       });
    return put;
  }
};

}  // namespace

RunLoop::~RunLoop() = default;

RunLoopRef RunLoop::current() {
  // Qt knows by itself which thread calls.
  static const auto loop = std::make_shared<QtRunLoop>();
  return loop;
}

}  // namespace kelvar
