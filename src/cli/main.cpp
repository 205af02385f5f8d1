#include <CLI/CLI.hpp>

#include "cli/Command.h"
#include "cli/addExternalCommand.h"
#include "cli/analytics.h"
#include "cli/archive.h"
#include "cli/checkVersion.h"
#include "cli/layers.h"
#include "cli/map/map.h"
#include "cli/messages.h"
#include "cli/refresh.h"
#include "cli/render.h"
#include "cli/settings.h"

using namespace kelvar::cli;

int main(int argc, char** argv) {
  Command kelvar("kelvar", "Lay flat designs onto four-cornered shapes in perspective");
  CLI::App& app = kelvar.app();
  const struct {
    const char* name;
    std::function<void()> run;
  } commands[] = {
      {"map", addMap(app)},
      {"render", addRender(app)},
      {"layers", addLayers(app)},
      {"refresh", addRefresh(app)},
      {"panel", addExternalCommand(app, "panel", "Make a mockup in a window")},
      {"archive", addArchive(app)},
      {"run", addExternalCommand(app, "run", "Run a script or a plug-in's command")},
      {"settings", addSettings(app)},
      {"check-version", addCheckVersion(app)},
      {"messages", addMessages(app)},
      {"analytics", addAnalytics(app)},
  };
  return kelvar.execute(argc, argv, [&] {
    if (app.get_subcommands().empty()) kelvar.misuse("a command is missing, such as map");
    for (const auto& command : commands) {
      if (app.got_subcommand(command.name)) command.run();
    }
    return 0;
  });
}
