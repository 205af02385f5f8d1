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
    line += next < arguments.size() ? arguments[next++] : QStringLiteral("(null)");
    format = format.sliced(mark + 2);
  }
}

}  // namespace

void logLine(QStringView format, const QStringList& arguments) {
  if (!category().isInfoEnabled()) return;
  qCInfo(category).noquote() << formatted(format, arguments);
}

}  // namespace kelvar
