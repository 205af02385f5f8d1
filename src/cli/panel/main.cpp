#include <CLI/CLI.hpp>
#include <QApplication>
#include <cstdlib>
#include <utility>

#include "analytics/finishReporting.h"
#include "cli/Command.h"
#include "cli/CommandError.h"
#include "cli/Output.h"
#include "panel/NotificationArea.h"
#include "panel/PanelWindow.h"
#include "platform/files/FileName.h"
#include "platform/hasAddressSpace.h"

namespace {

constexpr const char* kExplanation = R"(
Opens a window for mapping designs onto four-cornered shapes. In a photo, click the corners of a
screen, a wall or a label, then choose a design. In a Sketch document, select a four-cornered shape,
then choose one of the document's artboards.

Examples:
  kelvar panel desk.jpg --design app.png --design site.svg
  kelvar panel mockup.json
  kelvar panel phone.sketch --artboard Mockup --layer Glass

Draw saved work without a window with kelvar map --arrangement FILE -o OUT or kelvar render.
Exit status: 0 success, 1 a file cannot be opened or there is no display, 2 usage error.)";

constexpr int kMaxMillisecondsToEnd = 2000;

/// With less, the window system's threads cannot start, and Qt waits for them forever.
constexpr size_t kWindowSpace = size_t{256} << 20;

struct Arguments {
  std::string file;
  std::vector<std::string> designs;
  std::string artboard;
  std::vector<std::string> layers;
};

kelvar::DocumentChoice choiceOf(const Arguments& arguments) {
  kelvar::DocumentChoice choice{.artboard = QString::fromStdString(arguments.artboard)};
  for (const std::string& layer : arguments.layers) choice.layers << QString::fromStdString(layer);
  return choice;
}

int show(char** argv, const Arguments& arguments) {
  if (!kelvar::hasAddressSpace(kWindowSpace)) {
    kelvar::cli::fail(
        QStringLiteral("the window requires 256 MiB of address space, which is not available "
                       "(see ulimit -v)"));
  }
  // Pass only the program's name to Qt, so that Qt's own options do not apply.
  int count = 1;
  QApplication application(count, argv);
  application.setApplicationName(QStringLiteral("kelvar-panel"));
  application.setApplicationDisplayName(QStringLiteral("Kelvar"));
  kelvar::cli::PanelWindow window;
  kelvar::cli::MockupSession& session = window.session();
  window.onFailed = [&](const QString& message) {
    kelvar::cli::printError(kelvar::readableFileName(message));
    // Without a mockup, the window is of no use.
    if (!arguments.file.empty() && !session.hasMockup()) application.exit(kelvar::cli::kFailed);
  };
  window.show();
  kelvar::cli::NotificationArea news(&window.inspector());
  // Requests name the document's version of Sketch, so they wait until the document is open.
  bool hasStarted = false;
  window.onOpened = [&] {
    if (!std::exchange(hasStarted, true)) news.start();
  };
  if (arguments.file.empty()) window.onOpened();
  QStringList designs;
  for (const std::string& design : arguments.designs) designs << kelvar::fileNameFromBytes(design);
  session.addDesigns(designs);
  // Runs within the event loop so that a failure can end the loop.
  QMetaObject::invokeMethod(
      &window,
      [&] {
        if (arguments.file.empty()) return;
        session.open(kelvar::fileNameFromBytes(arguments.file), choiceOf(arguments));
      },
      Qt::QueuedConnection);
  const int status = QApplication::exec();
  session.stop(0);
  kelvar::finishReporting();
  // Some steps cannot be interrupted; without a window, nobody would know why the program lingers.
  if (!session.stop(kMaxMillisecondsToEnd)) std::_Exit(status);
  return status;
}

void addOptions(CLI::App& program, Arguments* arguments) {
  program.footer(kExplanation);
  program.add_option("FILE", arguments->file,
                     "A photo (PNG, JPEG, WebP or SVG), a Sketch document (.sketch), or a saved "
                     "arrangement (.json)");
  program
      .add_option("--design", arguments->designs, "A design to offer in the menu; may be repeated")
      ->type_name("DESIGN")
      ->allow_extra_args(false);
  program.add_option("--artboard", arguments->artboard, "The artboard of the document to show")
      ->type_name("NAME|ID");
  program
      .add_option("--layer", arguments->layers,
                  "A shape of the document to select; may be repeated")
      ->type_name("NAME|ID")
      ->allow_extra_args(false);
}

bool isDocument(const std::string& file) {
  return kelvar::SketchDocument::hasSupportedExtension(kelvar::fileNameFromBytes(file));
}

}  // namespace

int main(int argc, char** argv) {
  Arguments arguments;
  kelvar::cli::Command command("kelvar panel", "Make a mockup in a window");
  addOptions(command.app(), &arguments);
  return command.execute(argc, argv, [&] {
    const bool choosesInDocument = !arguments.artboard.empty() || !arguments.layers.empty();
    if (choosesInDocument && !isDocument(arguments.file)) {
      command.misuse("--artboard and --layer require a Sketch document (.sketch)");
    }
    return show(argv, arguments);
  });
}
