#pragma once

#include <memory>

#include "platform/Export.h"

namespace kelvar {

/// Counts what is under way and will come back to the main thread: requests, queued work and work
/// that was put off. Safe from any thread.
class KELVAR_EXPORT PendingWork {
 public:
  enum class Kind {
    /// A program that only waits for such work may end when there is none.
    Awaited,
    /// What tells about the use of the program. Its end is not put off for that, but for the two
    /// seconds of `URLSession::finishReports`.
    Report
  };

  PendingWork() = delete;

  /// Counts as one for as long as somebody holds it.
  static std::shared_ptr<void> begin(Kind kind = Kind::Awaited);
  static int count(Kind kind = Kind::Awaited);
};

}  // namespace kelvar
