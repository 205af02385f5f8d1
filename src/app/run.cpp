#include "app/run.h"

#include <unistd.h>

#include <CLI/CLI.hpp>
#include <filesystem>

#include "app/Failure.h"

namespace kelvar::app {
namespace {

[[noreturn]] void start(const std::filesystem::path& program,
                        const std::vector<std::string>& arguments) {
  std::vector<char*> words{const_cast<char*>(program.c_str())};
  for (const std::string& each : arguments) words.push_back(const_cast<char*>(each.c_str()));
  words.push_back(nullptr);
  execv(program.c_str(), words.data());
  throw Failure(Failure::kFailed,
                QStringLiteral("cannot start %1").arg(QString::fromStdString(program.string())));
}

}  // namespace

std::function<void()> addRun(CLI::App& program) {
  CLI::App* const run =
      program.add_subcommand("run", "Run a script or a plug-in's command (see kelvar run --help)");
  // All that follows is for kelvar-run.
  run->set_help_flag();
  run->prefix_command();
  return [run] {
    std::error_code error;
    const auto self = std::filesystem::read_symlink("/proc/self/exe", error);
    if (error) throw Failure(Failure::kFailed, QStringLiteral("cannot find kelvar-run"));
    start(self.parent_path() / "kelvar-run", run->remaining());
  };
}

}  // namespace kelvar::app
