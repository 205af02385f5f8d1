#include "platform/Log.h"

#include <QLoggingCategory>

namespace kelvar {
namespace {

const QLoggingCategory& category() {
  static const QLoggingCategory kCategory("kelvar", QtWarningMsg);
  return kCategory;
}

QString formatted(QStringView format, const QStringList& arguments) {
  QString line;
  qsizetype next = 0;
  while (true) {
    const qsizetype mark = format.indexOf(u"%@");
    line += format.first(mark < 0 ? format.size() : mark);
    if (mark < 0) return line;
    const QString argument = arguments.value(next++);
    line += argument.isNull() ? QStringLiteral("(null)") : argument;
    format = format.sliced(mark + 2);
  }
}

}  // namespace

void logLine(QStringView format, const QStringList& arguments) {
  if (!category().isInfoEnabled()) return;
  qCInfo(category).noquote() << formatted(format, arguments);
}

}  // namespace kelvar
