#pragma once

#include <CLI/App.hpp>
#include <functional>
#include <string>

namespace kelvar::app {

/// Adds a subcommand that is a program of its own, as `kelvar panel` is `kelvar-panel`: it lies
/// beside this one, takes its place, and gets all words that follow, --help included. So this one
/// starts without the libraries of the other.
std::function<void()> addProgram(CLI::App& program, const std::string& name,
                                 const std::string& description);

}  // namespace kelvar::app
