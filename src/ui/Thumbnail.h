#pragma once

#include <QIcon>

#include "platform/Image.h"

namespace kelvar {

/// A picture in proportion at a size in points that icons have, sharp up to two pixels a point.
/// Empty for null. What was made lately is kept.
QIcon thumbnail(const ImageRef& image, const QSize& size);

}  // namespace kelvar
