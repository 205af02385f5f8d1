#include <CLI/CLI.hpp>
#include <QApplication>
#include <QLoggingCategory>
#include <csignal>
#include <cstdio>

#include "app/Failure.h"
#include "app/panel/PanelWindow.h"
#include "app/panel/VendorNews.h"

namespace {

using kelvar::app::Failure;

constexpr const char* kExplanation = R"(
Opens a window in which designs are laid onto four-cornered shapes in a photo: click the corners of
a screen, a wall or a label, and choose a design for it.

Examples:
  kelvar panel desk.jpg --design app.png --design site.svg
  kelvar panel mockup.json

What is saved there, `kelvar map --arrangement FILE -o OUT` draws without a window.
Exit status: 0 done, 1 what was named cannot be opened, 2 misuse.)";

bool verbose = false;

void logToStandardError(QtMsgType type, const QMessageLogContext&, const QString& line) {
  if (verbose || type == QtFatalMsg) std::fprintf(stderr, "kelvar: %s\n", qUtf8Printable(line));
}

struct Arguments {
  std::string file;
  std::vector<std::string> designs;
};

int show(int argc, char** argv, const Arguments& arguments) {
  QApplication application(argc, argv);
  application.setApplicationName(QStringLiteral("kelvar-panel"));
  application.setApplicationDisplayName(QStringLiteral("Kelvar"));
  kelvar::app::PanelWindow window;
  window.didFail = [&](const QString& sentence) {
    std::fprintf(stderr, "kelvar: %s\n", qUtf8Printable(sentence));
    // With nothing open there is nothing to go on with.
    if (!arguments.file.empty() && !window.hasMockup()) application.exit(Failure::kFailed);
  };
  window.show();
  kelvar::app::VendorNews news(&window.column());
  news.start();
  QStringList designs;
  for (const std::string& design : arguments.designs) designs << QString::fromStdString(design);
  window.addDesigns(designs);
  // From within the event loop, so that a failure can end it.
  QMetaObject::invokeMethod(
      &window,
      [&] {
        if (!arguments.file.empty()) window.open(QString::fromStdString(arguments.file));
      },
      Qt::QueuedConnection);
  return QApplication::exec();
}

}  // namespace

int main(int argc, char** argv) {
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
  qInstallMessageHandler(logToStandardError);
  Arguments arguments;
  CLI::App program("Makes mockups in a window.", "kelvar panel");
  program.footer(kExplanation);
  program.set_version_flag("--version", "kelvar " KELVAR_VERSION);
  program.add_flag("--verbose", verbose, "Say on standard error what is being done");
  program.add_option("FILE", arguments.file,
                     "A photo (PNG, JPEG, WebP or SVG), or an arrangement saved before (.json)");
  program.add_option("--design", arguments.designs, "A design for the menu; may be given often")
      ->type_name("DESIGN")
      ->allow_extra_args(false);
  try {
    program.parse(argc, argv);
  } catch (const CLI::Success& success) {
    return program.exit(success);
  } catch (const CLI::ParseError& error) {
    std::fprintf(stderr, "kelvar: %s (see kelvar panel --help)\n", error.what());
    return Failure::kMisuse;
  }
  if (verbose) QLoggingCategory::setFilterRules(QStringLiteral("kelvar.info=true"));
  // What is left for Qt is the program's name alone: its own options are not ours to offer.
  int count = 1;
  return show(count, argv, arguments);
}
