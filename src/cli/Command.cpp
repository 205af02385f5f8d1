#include "cli/Command.h"

#include <CLI/CLI.hpp>
#include <csignal>
#include <cstdio>
#include <new>
#include <sstream>

#include "cli/CommandError.h"
#include "cli/Output.h"
#include "cli/StandardError.h"

namespace kelvar::cli {

Command::Command(const std::string& name, const std::string& description)
    : app_(description, name) {
  app_.set_version_flag("--version", "kelvar " KELVAR_VERSION);
  app_.add_flag("--verbose", isVerbose_, "Log what the program does to standard error");
}

int Command::execute(int argc, const char* const* argv, const std::function<int()>& run) {
  // Writing then fails with an error, which is reported like any other.
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
  logToStandardError();
  int status = 0;
  const int failed = statusOf([&] {
    if (!parse(argc, argv)) return;
    setVerbose(isVerbose_);
    status = run();
  });
  return failed != 0 ? failed : status;
}

int Command::statusOf(const std::function<void()>& work) {
  try {
    work();
    return 0;
  } catch (const CommandError& error) {
    std::fprintf(stderr, "kelvar: %s\n", error.what());
    return error.status();
  } catch (const std::bad_alloc&) {
    std::fputs("kelvar: there is too little memory\n", stderr);
    return kFailed;
  }
}

void Command::misuse(const std::string& message) const {
  cli::misuse(QString::fromStdString(message + " (see " + app_.get_name() + " --help)"));
}

bool Command::parse(int argc, const char* const* argv) {
  try {
    app_.parse(argc, argv);
    return true;
  } catch (const CLI::Success& success) {
    std::ostringstream text;
    app_.exit(success, text, text);
    writeOut(QByteArray::fromStdString(text.str()));
    return false;
  } catch (const CLI::ParseError& error) {
    misuse(error.what());
  }
}

}  // namespace kelvar::cli
