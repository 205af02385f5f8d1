#pragma once

#include <QString>
#include <QStringList>
#include <exception>
#include <string>
#include <type_traits>
#include <utility>

#include "pixels/Result.h"

namespace kelvar::cli {

/// The programs' exit statuses.
inline constexpr int kFailed = 1;
inline constexpr int kUsageError = 2;

/// Ends a command with an error message and an exit status. Only the programs' own code throws it:
/// errors that the library returns go through `orThrow`.
class CommandError : public std::exception {
 public:
  /// `details` are further lines below the message.
  explicit CommandError(Error error, const QStringList& details = {});

  const Error& error() const { return error_; }
  /// `kUsageError` for an invalid argument, else `kFailed`.
  int status() const;
  /// The message and the details, safe to print on a terminal, without a final line feed.
  const char* what() const noexcept override { return text_.c_str(); }

 private:
  Error error_;
  std::string text_;
};

/// Throws the error for an invalid command line.
[[noreturn]] void misuse(const QString& message);
/// Throws the error for any other failure.
[[noreturn]] void fail(const QString& message);

/// The value of a result. Throws its error as a `CommandError`.
template <typename T>
T orThrow(Result<T> result) {
  if (!result) throw CommandError(std::move(result).error());
  if constexpr (!std::is_void_v<T>) return *std::move(result);
}

}  // namespace kelvar::cli
