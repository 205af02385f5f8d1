#pragma once

#include <QString>
#include <cerrno>
#include <optional>

#include "pixels/Result.h"
#include "platform/files/FileName.h"

namespace kelvar {

inline QString messageOf(const Error& error) { return QString::fromStdString(error.message); }

/// For the log, which shows a null string as "(null)".
inline QString messageOf(const std::optional<Error>& error) {
  return error ? messageOf(*error) : QString();
}

/// Like the function in pixels/Result.h. File names in the message are made readable, since they
/// need not be valid text.
inline tl::unexpected<Error> failure(Error::Kind kind, const QString& message) {
  return failure(kind, readableFileName(message).toStdString());
}

/// A failure with the system's message for an error number.
inline tl::unexpected<Error> systemFailure(int errorNumber) {
  return failure(errorNumber == ENOENT ? Error::Kind::NotFound : Error::Kind::Io,
                 systemMessage(errorNumber));
}

/// The same failure, prefixed with the failed action: "cannot read a.png: it is a folder".
inline tl::unexpected<Error> failureIn(const QString& context, const Error& error) {
  return failure(error.kind, context + QStringLiteral(": ") + messageOf(error));
}

}  // namespace kelvar
