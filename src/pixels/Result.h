#pragma once

#include <string>
#include <tl/expected.hpp>
#include <utility>

namespace kelvar {

/// Why an operation failed.
struct Error {
  /// The kind of failure, for callers that treat some kinds differently. The program exits with 2
  /// for `InvalidArgument`, else with 1.
  enum class Kind { InvalidArgument, NotFound, Io, Damaged, Unsupported, TooLarge, Stopped };

  Kind kind;
  /// One sentence in UTF-8 for the user: what was wrong, where, and what to do about it. Without
  /// the program's name and without a final period.
  std::string message;
};

/// The return type of operations that can fail: a value or an error.
///
///     Result<Image> image = read(path);
///     if (!image) return tl::unexpected(image.error());
///     use(*image);
template <typename T>
using Result = tl::expected<T, Error>;

/// An error to return from a function that returns a `Result`:
///
///     return failure(Error::Kind::Io, "…");
inline tl::unexpected<Error> failure(Error::Kind kind, std::string message) {
  return tl::unexpected(Error{kind, std::move(message)});
}
inline tl::unexpected<Error> failure(Error::Kind kind, const char* message) {
  return failure(kind, std::string(message));
}

}  // namespace kelvar
