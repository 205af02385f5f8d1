#include "geometry/CGRectAspectFittingSize.h"

#include <algorithm>

QRectF CGRectAspectFittingSize(QSizeF size, QRectF rect) {
  const double ratio = std::min(rect.width() / size.width(), rect.height() / size.height());
  const double width = size.width() * ratio, height = size.height() * ratio;
  return {(rect.width() - width) * 0.5, (rect.height() - height) * 0.5, width, height};
}
