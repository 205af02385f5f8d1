#include "cli/StandardError.h"

#include <QGuiApplication>
#include <QLoggingCategory>
#include <atomic>
#include <cstdio>
#include <cstdlib>

#include "cli/CommandError.h"
#include "cli/Output.h"

namespace kelvar::cli {
namespace {

std::atomic<bool> logsAll = false;

/// Qt says in a paragraph that it cannot have a display, and aborts, which is for bugs.
[[noreturn]] void exitWithoutDisplay() {
  QStringList facts;
  for (const char* name : {"QT_QPA_PLATFORM", "WAYLAND_DISPLAY", "DISPLAY"}) {
    const QString value = qEnvironmentVariable(name);
    if (!value.isEmpty()) facts << QStringLiteral("%1 is \"%2\"").arg(QLatin1String(name), value);
  }
  if (facts.isEmpty()) facts << QStringLiteral("neither DISPLAY nor WAYLAND_DISPLAY is set");
  std::fprintf(stderr, "kelvar: no display can be reached: %s\n",
               qUtf8Printable(sanitizeForTerminal(facts.join(QStringLiteral(", ")))));
  std::_Exit(kFailed);
}

void log(QtMsgType type, const QMessageLogContext& context, const QString& line) {
  if (type == QtFatalMsg && qGuiApp && !QGuiApplication::primaryScreen()) exitWithoutDisplay();
  // After this warning Qt ends the program.
  if (!logsAll && line.contains(QStringLiteral("connection broke"))) {
    std::fputs("kelvar: the display is gone\n", stderr);
  }
  const bool isForUser = type == QtWarningMsg && qstrcmp(context.category, "kelvar") == 0;
  if (!isForUser && !logsAll && type != QtFatalMsg) return;
  std::fprintf(stderr, "kelvar: %s\n",
               qUtf8Printable(isForUser ? sanitizeForTerminal(line) : line));
}

}  // namespace

void setVerbose(bool isVerbose) {
  logsAll = isVerbose;
  if (isVerbose) QLoggingCategory::setFilterRules(QStringLiteral("kelvar.info=true"));
}

void logToStandardError() { qInstallMessageHandler(log); }

}  // namespace kelvar::cli
