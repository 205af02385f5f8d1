#pragma once

#include <functional>
#include <memory>

#include "platform/Export.h"

namespace kelvar {

class RunLoop;
using RunLoopRef = std::shared_ptr<RunLoop>;

/// A thread's event loop as a clock and timer. Tests provide their own.
class KELVAR_EXPORT RunLoop {
 public:
  /// A handle to delayed work. Releasing it cancels the work; this is safe even while the work
  /// runs.
  using Delayed = std::shared_ptr<void>;

  /// The run loop of the calling thread, based on Qt's event loop: delayed work runs only while
  /// that loop runs, and counts as `PendingTasks`. Exceptions from the work are logged and not
  /// propagated.
  static RunLoopRef current();

  virtual ~RunLoop();

  /// Seconds since an arbitrary point in time. Monotonic.
  virtual double mediaTime() const = 0;

  /// Runs `work` on the calling thread after the delay.
  virtual Delayed performAfterDelay(double seconds, std::function<void()> work) = 0;
};

}  // namespace kelvar
