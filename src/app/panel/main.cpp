#include <CLI/CLI.hpp>
#include <QApplication>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <utility>

#include "analytics/finishReporting.h"
#include "app/Failure.h"
#include "app/Output.h"
#include "app/StandardError.h"
#include "app/panel/PanelWindow.h"
#include "app/panel/VendorNews.h"
#include "platform/FileName.h"
#include "platform/hasAddressSpace.h"

namespace {

using kelvar::app::Failure;

constexpr const char* kExplanation = R"(
Opens a window in which designs are laid onto four-cornered shapes: in a photo, click the corners of
a screen, a wall or a label, and choose a design for it; in a Sketch document, select a shape with
four corners, and choose one of the document's artboards.

Examples:
  kelvar panel desk.jpg --design app.png --design site.svg
  kelvar panel mockup.json
  kelvar panel phone.sketch --artboard Mockup --layer Glass

What is saved there, `kelvar map --arrangement FILE -o OUT` or `kelvar render` draws without a window.
Exit status: 0 done, 1 what was named cannot be opened, or no display, 2 misuse.)";

constexpr int kMostMillisecondsToEnd = 2000;

/// With less, the window system's threads cannot start, and Qt waits for them.
constexpr size_t kWindowSpace = size_t{256} << 20;

struct Arguments {
  std::string file;
  std::vector<std::string> designs;
  std::string artboard;
  std::vector<std::string> layers;
};

kelvar::DocumentMockup::Choice choiceOf(const Arguments& arguments) {
  kelvar::DocumentMockup::Choice choice{.artboard = QString::fromStdString(arguments.artboard)};
  for (const std::string& layer : arguments.layers) choice.layers << QString::fromStdString(layer);
  return choice;
}

int show(int argc, char** argv, const Arguments& arguments) {
  if (!kelvar::hasAddressSpace(kWindowSpace)) {
    std::fputs(
        "kelvar: the window needs 256 MiB of address space, which the system does not give (see "
        "ulimit -v)\n",
        stderr);
    return Failure::kFailed;
  }
  QApplication application(argc, argv);
  application.setApplicationName(QStringLiteral("kelvar-panel"));
  application.setApplicationDisplayName(QStringLiteral("Kelvar"));
  kelvar::app::PanelWindow window;
  window.didFail = [&](const QString& sentence) {
    const QString line = kelvar::app::printable(kelvar::readableFileName(sentence));
    std::fprintf(stderr, "kelvar: %s\n", qUtf8Printable(line));
    // With nothing open there is nothing to go on with.
    if (!arguments.file.empty() && !window.hasMockup()) application.exit(Failure::kFailed);
  };
  window.show();
  kelvar::app::VendorNews news(&window.column());
  // What the servers are told of the host is that of the document.
  bool hasStarted = false;
  window.didOpen = [&] {
    if (!std::exchange(hasStarted, true)) news.start();
  };
  if (arguments.file.empty()) window.didOpen();
  QStringList designs;
  for (const std::string& design : arguments.designs) designs << kelvar::fileNameFromBytes(design);
  window.addDesigns(designs);
  // From within the event loop, so that a failure can end it.
  QMetaObject::invokeMethod(
      &window,
      [&] {
        if (arguments.file.empty()) return;
        window.open(kelvar::fileNameFromBytes(arguments.file), choiceOf(arguments));
      },
      Qt::QueuedConnection);
  const int status = QApplication::exec();
  window.stop(0);
  kelvar::finishReporting();
  // Some steps cannot be stopped, and nobody waits for them who sees no window.
  if (!window.stop(kMostMillisecondsToEnd)) std::_Exit(status);
  return status;
}

}  // namespace

int main(int argc, char** argv) {
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
  kelvar::app::logToStandardError();
  Arguments arguments;
  CLI::App program("Makes mockups in a window.", "kelvar panel");
  program.footer(kExplanation);
  program.set_version_flag("--version", "kelvar " KELVAR_VERSION);
  bool verbose = false;
  program.add_flag("--verbose", verbose, "Say on standard error what is being done");
  program.add_option("FILE", arguments.file,
                     "A photo (PNG, JPEG, WebP or SVG), a Sketch document (.sketch), or an "
                     "arrangement saved before (.json)");
  program.add_option("--design", arguments.designs, "A design for the menu; may be given often")
      ->type_name("DESIGN")
      ->allow_extra_args(false);
  program.add_option("--artboard", arguments.artboard, "The artboard of the document to show")
      ->type_name("NAME|ID");
  program
      .add_option("--layer", arguments.layers,
                  "A shape of the document to select; may be given often")
      ->type_name("NAME|ID")
      ->allow_extra_args(false);
  try {
    program.parse(argc, argv);
    const bool choosesInDocument = !arguments.artboard.empty() || !arguments.layers.empty();
    if (choosesInDocument &&
        !kelvar::SketchDocument::hasKnownEnding(kelvar::fileNameFromBytes(arguments.file))) {
      throw CLI::ValidationError("--artboard and --layer are of a Sketch document (.sketch)");
    }
  } catch (const CLI::Success& success) {
    return program.exit(success);
  } catch (const CLI::ParseError& error) {
    const QString problem = kelvar::app::printable(QString::fromUtf8(error.what()));
    std::fprintf(stderr, "kelvar: %s (see kelvar panel --help)\n", qUtf8Printable(problem));
    return Failure::kMisuse;
  }
  kelvar::app::setVerbose(verbose);
  // What is left for Qt is the program's name alone: its own options are not ours to offer.
  int count = 1;
  return show(count, argv, arguments);
}
