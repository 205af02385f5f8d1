#include "platform/Format.h"

namespace kelvar {

QString formatted(QStringView format, const QStringList& arguments) {
  QString text;
  qsizetype next = 0;
  while (true) {
    const qsizetype mark = format.indexOf(u"%@");
    text += format.first(mark < 0 ? format.size() : mark);
    if (mark < 0) return text;
    const QString argument = arguments.value(next++);
    text += argument.isNull() ? QStringLiteral("(null)") : argument;
    format = format.sliced(mark + 2);
  }
}

}  // namespace kelvar
