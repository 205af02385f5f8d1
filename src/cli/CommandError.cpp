#include "cli/CommandError.h"

#include "cli/Output.h"
#include "platform/QtError.h"

namespace kelvar::cli {
namespace {

[[noreturn]] void end(Error::Kind kind, const QString& message) {
  throw CommandError(failure(kind, message).value());
}

}  // namespace

CommandError::CommandError(Error error, const QStringList& details) : error_(std::move(error)) {
  QStringList lines{sanitizeForTerminal(messageOf(error_))};
  for (const QString& line : details) lines.append(sanitizeForTerminal(line));
  text_ = lines.join(u'\n').toStdString();
}

int CommandError::status() const {
  return error_.kind == Error::Kind::InvalidArgument ? kUsageError : kFailed;
}

void misuse(const QString& message) { end(Error::Kind::InvalidArgument, message); }

void fail(const QString& message) { end(Error::Kind::Io, message); }

}  // namespace kelvar::cli
