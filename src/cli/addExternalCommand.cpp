#include "cli/addExternalCommand.h"

#include <unistd.h>

#include <filesystem>
#include <vector>

#include "cli/CommandError.h"
#include "platform/files/FileName.h"

namespace kelvar::cli {
namespace {

[[noreturn]] void start(const std::string& name, std::vector<std::string> words) {
  std::error_code error;
  const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", error);
  const std::string path = self.parent_path() / name;
  words.insert(words.begin(), name);
  std::vector<char*> arguments;
  for (std::string& word : words) arguments.push_back(word.data());
  arguments.push_back(nullptr);
  ::execv(path.c_str(), arguments.data());
  fail(QStringLiteral("cannot start %1: it should lie beside kelvar").arg(fileNameFromBytes(path)));
}

}  // namespace

std::function<void()> addExternalCommand(CLI::App& program, const std::string& name,
                                         const std::string& description) {
  CLI::App* const command = program.add_subcommand(name, description);
  command->set_help_flag();
  command->prefix_command();
  return [command, name] { start("kelvar-" + name, command->remaining()); };
}

}  // namespace kelvar::cli
