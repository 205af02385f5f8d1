#pragma once

#include <CLI/App.hpp>
#include <functional>

namespace kelvar::cli {

/// Adds `kelvar analytics` to the command line. Returns a function to call after parsing; it throws
/// a `CommandError` on failure.
std::function<void()> addAnalytics(CLI::App& program);

}  // namespace kelvar::cli
