#include "app/StandardError.h"

#include <QLoggingCategory>
#include <atomic>
#include <cstdio>

#include "app/Output.h"

namespace kelvar::app {
namespace {

std::atomic<bool> logsAll = false;

void log(QtMsgType type, const QMessageLogContext& context, const QString& line) {
  const bool isForUser = type == QtWarningMsg && qstrcmp(context.category, "kelvar") == 0;
  if (!isForUser && !logsAll && type != QtFatalMsg) return;
  std::fprintf(stderr, "kelvar: %s\n", qUtf8Printable(isForUser ? printable(line) : line));
}

}  // namespace

void setVerbose(bool isVerbose) {
  logsAll = isVerbose;
  if (isVerbose) QLoggingCategory::setFilterRules(QStringLiteral("kelvar.info=true"));
}

void logToStandardError() { qInstallMessageHandler(log); }

}  // namespace kelvar::app
