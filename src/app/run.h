#pragma once

#include <CLI/App.hpp>
#include <functional>

namespace kelvar::app {

/// Adds `kelvar run` to the command line. What comes back starts kelvar-run, which stands beside
/// the program, in its place, and throws a `Failure` where it cannot.
std::function<void()> addRun(CLI::App& program);

}  // namespace kelvar::app
