#pragma once

#include <functional>

namespace kelvar::warp {

/// Calls `task(i)` once for each i in [0, count), on up to `threads` threads of which the caller's
/// is one (0: one each processor), and returns when all are done. The other threads belong to the
/// process and sleep between calls. Tasks must not throw. A call from several threads at once is
/// safe; one from within a task runs on that thread alone.
void parallelFor(int count, int threads, const std::function<void(int)>& task);

}  // namespace kelvar::warp
