#pragma once

#include <CLI/App.hpp>
#include <string>

namespace kelvar::cli {

/// Default of --timeout, in seconds.
inline constexpr const char* kDefaultTimeout = "60";

/// Adds --timeout, which is stored in `*seconds`, to a command. Returns the option.
CLI::Option* addTimeout(CLI::App* command, std::string* seconds);

/// Ends the program with an error message and exit status 1 if it still runs after this many
/// seconds, even inside a library call that does not return. Throws a `CommandError` if `seconds`
/// is not a number in range.
///
/// Files that are replaced atomically keep their old content: the new content has no name yet.
/// Standard output, pipes and devices would get truncated output, so lift the limit before writing
/// the first byte to them.
void limitTime(const std::string& seconds);
void liftTimeLimit();

/// Lifts the limit if the output is standard output, a pipe or a device.
void liftTimeLimitForStream(const std::string& output);

}  // namespace kelvar::cli
