#pragma once

#include <CLI/App.hpp>
#include <functional>
#include <string>

namespace kelvar::cli {

/// The code that all programs share: signals, logging, the command line, errors and the exit
/// status.
///
///     int main(int argc, char** argv) {
///       Command command("kelvar panel", "Make a mockup in a window");
///       command.app().add_option(…);
///       return command.execute(argc, argv, [&] { return show(arguments); });
///     }
class Command {
 public:
  /// `name` is the command as typed, such as "kelvar run". Adds --help, --version and --verbose.
  Command(const std::string& name, const std::string& description);

  /// Where to add options and subcommands.
  CLI::App& app() { return app_; }

  /// Parses the command line, then calls `run`, unless it contains --help or --version. Returns the
  /// exit status. Errors become one message on standard error.
  int execute(int argc, const char* const* argv, const std::function<int()>& run);

  /// Calls `work` and prints the `CommandError` that it throws. Returns the exit status: 0, or the
  /// error's. For programs that have to continue after an error.
  static int statusOf(const std::function<void()>& work);

  /// Like the function `misuse`, but also points to --help.
  [[noreturn]] void misuse(const std::string& message) const;

 private:
  /// False for --help and --version, which it handles itself.
  bool parse(int argc, const char* const* argv);

  CLI::App app_;
  bool isVerbose_ = false;
};

}  // namespace kelvar::cli
