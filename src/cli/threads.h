#pragma once

#include <CLI/App.hpp>

namespace kelvar::cli {

/// Adds --threads to a command. The limit applies to everything that the command does, including
/// Qt's own threads.
void addThreads(CLI::App* command);

}  // namespace kelvar::cli
