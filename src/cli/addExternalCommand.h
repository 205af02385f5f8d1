#pragma once

#include <CLI/App.hpp>
#include <functional>
#include <string>

namespace kelvar::cli {

/// Adds a subcommand that is a separate program in the same folder: `kelvar panel` is
/// `kelvar-panel`. That program replaces this process and gets all arguments that follow, including
/// --help. `kelvar` itself therefore starts without loading the other program's libraries.
std::function<void()> addExternalCommand(CLI::App& program, const std::string& name,
                                         const std::string& description);

}  // namespace kelvar::cli
