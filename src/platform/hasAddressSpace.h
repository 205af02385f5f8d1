#pragma once

#include <sys/mman.h>

#include <cstddef>

namespace kelvar {

/// Whether the process may have so many bytes of address space more: to be asked before what breaks
/// off, or waits forever, where it gets less than it takes.
inline bool hasAddressSpace(size_t bytes) {
  constexpr int kNothingYet = MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE;
  void* const space = mmap(nullptr, bytes, PROT_NONE, kNothingYet, -1, 0);
  if (space == MAP_FAILED) return false;
  munmap(space, bytes);
  return true;
}

}  // namespace kelvar
