#include "cli/Output.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "cli/CommandError.h"

namespace kelvar::cli {

void writeOut(const QByteArray& bytes) {
  if (std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stdout) == size_t(bytes.size()) &&
      std::fflush(stdout) == 0) {
    return;
  }
  fail(QStringLiteral("cannot write to standard output: ") +
       QString::fromLocal8Bit(std::strerror(errno)));
}

void print(const QByteArray& text) { writeOut(text + '\n'); }

void printError(const QString& message) {
  std::fprintf(stderr, "kelvar: %s\n", qUtf8Printable(sanitizeForTerminal(message)));
}

QString sanitizeForTerminal(QString text) {
  for (QChar& character : text) {
    if (character.category() == QChar::Other_Control) character = QChar::ReplacementCharacter;
  }
  return text;
}

}  // namespace kelvar::cli
