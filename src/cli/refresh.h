#pragma once

#include <CLI/App.hpp>
#include <functional>

namespace kelvar::cli {

/// Adds `kelvar refresh` to the command line. Returns a function to call after parsing; it throws a
/// `CommandError` on failure.
std::function<void()> addRefresh(CLI::App& program);

}  // namespace kelvar::cli
