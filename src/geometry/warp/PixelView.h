#pragma once

#include <cstddef>
#include <cstdint>

namespace kelvar::warp {

/// Somebody else's pixels: four bytes each, premultiplied, the channels in any order. Rows run
/// from the top; `stride` is the distance between rows in bytes. Owns nothing.
struct ConstPixelView {
  const uint8_t* data = nullptr;
  int width = 0;
  int height = 0;
  ptrdiff_t stride = 0;

  const uint8_t* row(int y) const { return data + y * stride; }
};

struct PixelView {
  uint8_t* data = nullptr;
  int width = 0;
  int height = 0;
  ptrdiff_t stride = 0;

  uint8_t* row(int y) const { return data + y * stride; }
};

}  // namespace kelvar::warp
