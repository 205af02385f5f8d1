#pragma once

#include <cmath>

namespace kelvar {

/// Rounding outward to whole pixels. A coordinate within a millionth of a pixel of a whole number
/// counts as that number: 99.99999999999999 and 100.00000000000001 are rounding errors and must not
/// remove or add a row.
inline constexpr double kPixelTolerance = 1e-6;

inline double floorToPixel(double value) { return std::floor(value + kPixelTolerance); }
inline double ceilToPixel(double value) { return std::ceil(value - kPixelTolerance); }

}  // namespace kelvar
