#pragma once

#include <QIcon>

#include "platform/image/Image.h"

namespace kelvar {

/// The image scaled to fit an icon of `size` points, sharp up to two pixels per point. Empty for
/// null. Recent icons are cached.
QIcon thumbnail(const ImageRef& image, const QSize& size);

}  // namespace kelvar
