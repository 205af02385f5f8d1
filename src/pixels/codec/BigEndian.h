#pragma once

#include <cstdint>

namespace kelvar {

inline uint32_t readBigEndian(const uint8_t* p) {
  return uint32_t{p[0]} << 24 | uint32_t{p[1]} << 16 | uint32_t{p[2]} << 8 | p[3];
}

inline void writeBigEndian(uint32_t value, uint8_t* p) {
  for (int i = 0; i < 4; ++i) p[i] = static_cast<uint8_t>(value >> (24 - 8 * i));
}

}  // namespace kelvar
