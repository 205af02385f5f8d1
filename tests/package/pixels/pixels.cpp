#include <cstdint>

#include "pixels/warp/Warp.h"

/// Moves one red pixel to the other end of the row.
int main() {
  const uint8_t from[] = {0, 0, 255, 255, 0, 0, 0, 0};
  uint8_t to[8] = {};
  const kelvar::warp::Quad flipped{{{2, 0}, {0, 0}, {0, 1}, {2, 1}}};
  if (!kelvar::warp::warp({from, 2, 1, 8}, {to, 2, 1, 8}, flipped)) return 1;
  return to[6] == 255 && to[7] == 255 && to[3] == 0 ? 0 : 1;
}
