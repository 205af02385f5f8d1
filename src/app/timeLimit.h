#pragma once

#include <CLI/App.hpp>
#include <string>

namespace kelvar::app {

/// The seconds that --timeout stands at.
inline constexpr const char* kUsualTimeout = "60";

/// Adds --timeout to a command; `*seconds` is what it says. The option.
CLI::Option* addTimeout(CLI::App* command, std::string* seconds);

/// Ends the program with a sentence and exit status 1 when it is still at work after so many
/// seconds, whatever it is at: even a single call into a library that does not come back. Throws a
/// `Failure` for what is no number in range.
///
/// Files that are replaced as a whole are as they were: what is written beside them has no name
/// yet. What goes to standard output, a pipe or a device would be cut off, so lift the limit before
/// the first byte of it.
void limitTime(const std::string& seconds);
void liftTimeLimit();

/// Lifts the limit where the output is such a stream.
void liftTimeLimitForStream(const std::string& output);

}  // namespace kelvar::app
