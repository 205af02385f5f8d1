#pragma once

#include <CLI/App.hpp>

namespace kelvar::cli {

/// Adds --fonts to a command that draws documents.
void addFonts(CLI::App* command);

}  // namespace kelvar::cli
