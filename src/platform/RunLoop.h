#pragma once

#include <functional>
#include <memory>

#include "platform/Export.h"

namespace kelvar {

class RunLoop;
using RunLoopRef = std::shared_ptr<RunLoop>;

/// A thread's event loop as a clock that work can be put off by. Tests bring one of their own.
class KELVAR_EXPORT RunLoop {
 public:
  /// Work that is put off. Dropped, also while it runs, it is not done any more.
  using Delayed = std::shared_ptr<void>;

  /// That of the thread that calls, over Qt's event loop: what is put off is done only while that
  /// runs, and counts as `PendingWork`. An exception that comes out of it ends there, in a log
  /// line.
  static RunLoopRef current();

  virtual ~RunLoop();

  /// In seconds since some moment, never set back.
  virtual double mediaTime() const = 0;

  /// On the thread that calls.
  virtual Delayed performAfterDelay(double seconds, std::function<void()> work) = 0;
};

}  // namespace kelvar
