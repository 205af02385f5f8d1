#pragma once

#include <memory>

#include "platform/Export.h"

namespace kelvar {

/// Counts what is under way and will come back to the main thread: requests, queued work and work
/// that was put off. A
/// program that only waits for such work may end when there is none. Safe from any thread.
class KELVAR_EXPORT PendingWork {
 public:
  PendingWork() = delete;

  /// Counts as one for as long as somebody holds it.
  static std::shared_ptr<void> begin();
  static int count();
};

}  // namespace kelvar
