#pragma once

namespace kelvar::cli {

/// Makes this process the parent of processes that its descendants leave behind. Call once, at the
/// start.
void adoptDescendants();

/// Ends all descendants of this process: sends SIGTERM and, half a second later, SIGKILL. A process
/// in a session of its own, such as a browser that was opened, keeps running.
void endDescendants();

}  // namespace kelvar::cli
