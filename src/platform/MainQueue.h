#pragma once

#include <functional>

#include "platform/Export.h"
#include "platform/PendingWork.h"

namespace kelvar {

/// The queue of the main thread: the one that the QCoreApplication lives on and whose event loop
/// runs.
class KELVAR_EXPORT MainQueue {
 public:
  MainQueue() = delete;

  /// Runs `work` on the main thread later, in the order of the calls. Without a QCoreApplication
  /// there is no main thread: then `work` is dropped, with a log line. Safe from any thread.
  static void async(std::function<void()> work,
                    PendingWork::Kind kind = PendingWork::Kind::Awaited);
};

}  // namespace kelvar
