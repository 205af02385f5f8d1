#pragma once

#include <QRectF>
#include <algorithm>

#include "pixels/PixelSnapping.h"
#include "platform/image/ImageFile.h"

namespace kelvar {

/// `rect` widened to whole pixels and clipped to a rectangle of `size` at the origin. Empty if
/// nothing is left or a coordinate is NaN.
inline QRect clippedToPixels(const QRectF& rect, const QSize& size) {
  const QRectF box = rect.normalized();
  if (!(box.width() > 0 && box.height() > 0)) return {};
  // With the arguments in this order, NaN is preserved and fails the comparison below.
  const double left = std::max(floorToPixel(box.left()), 0.0);
  const double top = std::max(floorToPixel(box.top()), 0.0);
  const double right = std::min(ceilToPixel(box.right()), double(size.width()));
  const double bottom = std::min(ceilToPixel(box.bottom()), double(size.height()));
  if (!(left < right && top < bottom)) return {};
  return {int(left), int(top), int(right - left), int(bottom - top)};
}

}  // namespace kelvar
