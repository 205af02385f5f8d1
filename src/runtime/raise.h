#pragma once

#include <QString>
#include <stdexcept>

#include "pixels/Result.h"

namespace kelvar {

/// For operations of described classes: the script that called gets an `Error` with this message.
[[noreturn]] inline void raise(const QString& message) {
  throw std::runtime_error(message.toStdString());
}

template <class T>
T orRaise(Result<T> result) {
  if (!result) throw std::runtime_error(result.error().message);
  if constexpr (!std::is_void_v<T>) return *std::move(result);
}

}  // namespace kelvar
