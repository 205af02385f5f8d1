#pragma once

#include <functional>

#include "pixels/Result.h"

namespace kelvar::cli {

/// Fails if no API server is configured.
Result<void> checkApiServer();

/// Calls `start`, which starts a request, in an application with an event loop, and returns after
/// `QCoreApplication::quit()`.
void runRequest(const std::function<void()>& start);

}  // namespace kelvar::cli
