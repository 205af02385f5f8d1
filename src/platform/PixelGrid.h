#pragma once

#include <QRectF>
#include <algorithm>
#include <cmath>

#include "platform/ImageFile.h"

namespace kelvar {

/// Widening to whole pixels. A length that misses a whole number by less than a millionth of a
/// pixel is that number: 99.99999999999999 and 100.00000000000001 come from rounding, not from
/// anybody's drawing, and must not cost or add a row.
inline constexpr double kPixelTolerance = 1e-6;

inline double floorToPixel(double value) { return std::floor(value + kPixelTolerance); }
inline double ceilToPixel(double value) { return std::ceil(value - kPixelTolerance); }

/// `rect` widened to whole pixels, within (0, 0) and `size`. Empty when nothing is left, and for
/// not a number.
inline QRect clippedToPixels(const QRectF& rect, const QSize& size) {
  const QRectF box = rect.normalized();
  if (!(box.width() > 0 && box.height() > 0)) return {};
  // In this order of arguments, what is not a number stays so and fails the comparison below.
  const double left = std::max(floorToPixel(box.left()), 0.0);
  const double top = std::max(floorToPixel(box.top()), 0.0);
  const double right = std::min(ceilToPixel(box.right()), double(size.width()));
  const double bottom = std::min(ceilToPixel(box.bottom()), double(size.height()));
  if (!(left < right && top < bottom)) return {};
  return {int(left), int(top), int(right - left), int(bottom - top)};
}

}  // namespace kelvar
