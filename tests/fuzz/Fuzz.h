#pragma once

#include <QByteArray>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

/// What libFuzzer calls with each input.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace kelvar {

/// Ends the program where something does not hold, as a crash would.
inline void check(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "does not hold: %s\n", what);
  std::abort();
}

inline QByteArray bytesOf(const uint8_t* data, size_t size) {
  return QByteArray(reinterpret_cast<const char*>(data), qsizetype(size));
}

}  // namespace kelvar
