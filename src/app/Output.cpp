#include "app/Output.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "app/Failure.h"

namespace kelvar::app {

void writeOut(const QByteArray& bytes) {
  if (std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout) == size_t(bytes.size()) &&
      std::fflush(stdout) == 0) {
    return;
  }
  throw Failure(Failure::kFailed, QStringLiteral("cannot write to standard output: ") +
                                      QString::fromLocal8Bit(std::strerror(errno)));
}

void print(const QByteArray& text) { writeOut(text + '\n'); }

QString printable(QString text) {
  for (QChar& character : text) {
    if (character.category() == QChar::Other_Control) character = QChar::ReplacementCharacter;
  }
  return text;
}

}  // namespace kelvar::app
