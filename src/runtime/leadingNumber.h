#pragma once

#include <QString>
#include <charconv>
#include <limits>
#include <type_traits>

namespace kelvar {

/// The number at the start of the text, after leading white space; 0 if there is none. Integers out
/// of range are clamped.
template <class T>
T leadingNumber(const QString& text) {
  const QByteArray bytes = text.trimmed().toLatin1();
  const bool hasPlus = bytes.startsWith('+') && !bytes.startsWith("+-");
  T number = 0;
  const auto [end, error] =
      std::from_chars(bytes.data() + hasPlus, bytes.data() + bytes.size(), number);
  if (error != std::errc::result_out_of_range || std::is_floating_point_v<T>) return number;
  return bytes.startsWith('-') ? std::numeric_limits<T>::min() : std::numeric_limits<T>::max();
}

}  // namespace kelvar
