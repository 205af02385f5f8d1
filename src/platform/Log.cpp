#include "platform/Log.h"

#include <QLoggingCategory>

#include "platform/Format.h"
#include "platform/files/FileName.h"

namespace kelvar {
namespace {

const QLoggingCategory& category() {
  static const QLoggingCategory kCategory("kelvar", QtWarningMsg);
  return kCategory;
}

}  // namespace

bool isLogging() { return category().isInfoEnabled(); }

void logLine(QStringView format, const QStringList& arguments) {
  if (!isLogging()) return;
  qCInfo(category).noquote() << readableFileName(formatted(format, arguments));
}

void warnUser(const QString& sentence) {
  qCWarning(category).noquote() << readableFileName(sentence);
}

}  // namespace kelvar
