#pragma once

#include <QByteArray>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

/// libFuzzer calls this with each input.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace kelvar {

/// Aborts if an expectation does not hold; libFuzzer then reports a crash.
inline void check(bool holds, const char* what) {
  if (holds) return;
  std::fprintf(stderr, "failed expectation: %s\n", what);
  std::abort();
}

inline QByteArray bytesOf(const uint8_t* data, size_t size) {
  return QByteArray(reinterpret_cast<const char*>(data), qsizetype(size));
}

}  // namespace kelvar
