#pragma once

#include <sys/mman.h>

#include <cstddef>

namespace kelvar {

/// Whether the process can map this many more bytes. Check this before calling code that aborts or
/// waits forever if it cannot.
inline bool hasAddressSpace(size_t bytes) {
  constexpr int kNothingYet = MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE;
  void* const space = mmap(nullptr, bytes, PROT_NONE, kNothingYet, -1, 0);
  if (space == MAP_FAILED) return false;
  munmap(space, bytes);
  return true;
}

}  // namespace kelvar
