#pragma once

#include <memory>

#include "platform/Export.h"

namespace kelvar {

/// Counts the tasks that will continue on the main thread: requests, queued work and delayed work.
/// Safe from any thread.
class KELVAR_EXPORT PendingTasks {
 public:
  enum class Kind {
    /// Tasks that a program waits for. It may exit when none are left.
    Awaited,
    /// Usage reports. They delay the program's exit by at most the two seconds of
    /// `URLSession::finishReports`.
    Report
  };

  PendingTasks() = delete;

  /// Counts as one task until the last copy of the token is released.
  static std::shared_ptr<void> acquire(Kind kind = Kind::Awaited);
  static int count(Kind kind = Kind::Awaited);
};

}  // namespace kelvar
