#pragma once

#include <functional>

#include "pixels/Export.h"

namespace kelvar {

/// Calls `task(i)` once for each i in [0, count), on up to `threads` threads including the caller's
/// (0: one per processor), and returns when all are done. Tasks must not throw. They are started in
/// the order of their numbers, so a task may wait for those with lower numbers.
///
/// The other threads are shared by the whole process and sleep between calls. Safe to call from
/// several threads at once. A call from within a task runs on that task's thread alone.
KELVAR_PIXELS_EXPORT void parallelFor(int count, int threads, const std::function<void(int)>& task);

/// Limits all later calls in the process to `threads` threads, including the caller's; 0 lifts the
/// limit. For programs whose users can limit their use of the machine. Safe from any thread.
KELVAR_PIXELS_EXPORT void limitThreads(int threads);

/// The number of threads that a call requesting `threads` threads may use, for libraries that have
/// their own threads.
KELVAR_PIXELS_EXPORT int allowedThreads(int threads);

}  // namespace kelvar
