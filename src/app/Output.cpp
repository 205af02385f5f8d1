#include "app/Output.h"

#include <cstdio>

#include "app/Failure.h"

namespace kelvar::app {

void print(const QByteArray& text) {
  const QByteArray line = text + '\n';
  if (std::fwrite(line.constData(), 1, size_t(line.size()), stdout) != size_t(line.size()) ||
      std::fflush(stdout) != 0) {
    throw Failure(Failure::kFailed, QStringLiteral("cannot write to standard output"));
  }
}

QString printable(QString text) {
  for (QChar& character : text) {
    if (character.category() == QChar::Other_Control) character = QChar::ReplacementCharacter;
  }
  return text;
}

}  // namespace kelvar::app
