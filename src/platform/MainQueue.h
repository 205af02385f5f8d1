#pragma once

#include <functional>

#include "platform/Export.h"
#include "platform/PendingTasks.h"

namespace kelvar {

/// The queue of the main thread, which has the QCoreApplication and runs its event loop.
class KELVAR_EXPORT MainQueue {
 public:
  MainQueue() = delete;

  /// Runs `work` on the main thread later, in the order of the calls. Without a QCoreApplication,
  /// `work` is dropped, with a log line. Safe from any thread.
  static void async(std::function<void()> work,
                    PendingTasks::Kind kind = PendingTasks::Kind::Awaited);
};

}  // namespace kelvar
