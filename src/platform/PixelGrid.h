#pragma once

#include <cmath>

#include "platform/ImageFile.h"

namespace kelvar {

/// Widening to whole pixels. A length that misses a whole number by less than a millionth of a
/// pixel is that number: 99.99999999999999 and 100.00000000000001 come from rounding, not from
/// anybody's drawing, and must not cost or add a row.
inline constexpr double kPixelTolerance = 1e-6;

inline double floorToPixel(double value) { return std::floor(value + kPixelTolerance); }
inline double ceilToPixel(double value) { return std::ceil(value - kPixelTolerance); }

/// Whether a picture of this many pixels can be held: at least one, and within the limits that
/// hold for files too. False for not a number.
inline bool isHoldable(double width, double height) {
  return width >= 1 && height >= 1 && width <= ImageFile::kMaxSide &&
         height <= ImageFile::kMaxSide && width * height * 4 <= double(ImageFile::kMaxBytes);
}

}  // namespace kelvar
