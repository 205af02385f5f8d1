#pragma once

#include <cstddef>
#include <cstdint>

#include "pixels/PixelFormat.h"

namespace kelvar {

/// A read-only view of pixels that the caller owns. Rows are ordered from top to bottom; `stride`
/// is the distance between their starts in bytes. Rows and stride are aligned to the format's
/// component type.
struct ConstPixelView {
  const uint8_t* data = nullptr;
  int width = 0;
  int height = 0;
  ptrdiff_t stride = 0;
  PixelFormat format = {};

  const uint8_t* row(int y) const { return data + y * stride; }
};

/// A writable view of pixels that the caller owns.
struct PixelView {
  uint8_t* data = nullptr;
  int width = 0;
  int height = 0;
  ptrdiff_t stride = 0;
  PixelFormat format = {};

  uint8_t* row(int y) const { return data + y * stride; }

  operator ConstPixelView() const { return {data, width, height, stride, format}; }
};

}  // namespace kelvar
