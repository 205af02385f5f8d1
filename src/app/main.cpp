#include <CLI/CLI.hpp>
#include <csignal>
#include <cstdio>
#include <new>
#include <sstream>

#include "app/Failure.h"
#include "app/Output.h"
#include "app/StandardError.h"
#include "app/addProgram.h"
#include "app/analytics.h"
#include "app/archive.h"
#include "app/checkVersion.h"
#include "app/layers.h"
#include "app/map.h"
#include "app/messages.h"
#include "app/refresh.h"
#include "app/render.h"
#include "app/settings.h"

namespace {

using kelvar::app::Failure;

int complain(int status, const char* sentence) {
  const QString line = kelvar::app::printable(QString::fromUtf8(sentence));
  std::fprintf(stderr, "kelvar: %s\n", qUtf8Printable(line));
  return status;
}

int run(int argc, char** argv) {
  CLI::App program("Lays flat designs onto four-cornered shapes in perspective.", "kelvar");
  program.set_version_flag("--version", "kelvar " KELVAR_VERSION);
  bool verbose = false;
  program.add_flag("--verbose", verbose, "Say on standard error what is being done");
  const struct {
    const char* name;
    std::function<void()> run;
  } commands[] = {
      {"map", kelvar::app::addMap(program)},
      {"render", kelvar::app::addRender(program)},
      {"layers", kelvar::app::addLayers(program)},
      {"refresh", kelvar::app::addRefresh(program)},
      {"panel", kelvar::app::addProgram(program, "panel", "Make a mockup in a window")},
      {"archive", kelvar::app::addArchive(program)},
      {"run", kelvar::app::addProgram(program, "run", "Run a script or a plug-in's command")},
      {"settings", kelvar::app::addSettings(program)},
      {"check-version", kelvar::app::addCheckVersion(program)},
      {"messages", kelvar::app::addMessages(program)},
      {"analytics", kelvar::app::addAnalytics(program)},
  };
  try {
    program.parse(argc, argv);
  } catch (const CLI::Success& success) {  // --help and --version.
    std::ostringstream text;
    const int status = program.exit(success, text, text);
    kelvar::app::writeOut(QByteArray::fromStdString(text.str()));
    return status;
  } catch (const CLI::ParseError& error) {
    return complain(Failure::kMisuse, (std::string(error.what()) + " (see kelvar --help)").c_str());
  }
  if (program.get_subcommands().empty()) {
    return complain(Failure::kMisuse, "a command is missing, such as map (see kelvar --help)");
  }
  kelvar::app::setVerbose(verbose);
  for (const auto& command : commands) {
    if (program.got_subcommand(command.name)) command.run();
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  // A full disk and a closed pipe are to be told like everything else.
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
  kelvar::app::logToStandardError();
  try {
    return run(argc, argv);
  } catch (const Failure& failure) {
    return complain(failure.status(), failure.what());
  } catch (const std::bad_alloc&) {
    return complain(Failure::kFailed, "there is too little memory");
  }
}
