#pragma once

namespace kelvar::app {

/// From now on programs that this one's programs leave behind are its own. Once, at the start.
void adoptDescendants();

/// Ends the programs that this one has started and those that they have started in turn: asks them
/// first, and half a second later does not ask any more. One that has begun a session of its own,
/// as a browser does that was opened, goes on.
void endDescendants();

}  // namespace kelvar::app
