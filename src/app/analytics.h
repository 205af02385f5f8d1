#pragma once

#include <CLI/App.hpp>
#include <functional>

namespace kelvar::app {

/// Adds `kelvar analytics` to the command line. What comes back runs it once the line is parsed,
/// and throws a `Failure` where it cannot.
std::function<void()> addAnalytics(CLI::App& program);

}  // namespace kelvar::app
