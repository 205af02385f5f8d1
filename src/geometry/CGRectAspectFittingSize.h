#pragma once

#include <QRectF>

#include "platform/Export.h"

/// The largest rectangle with `size`'s aspect ratio that fits into `rect`'s size, centered there.
/// The origin of `rect` is ignored: add it to the result if needed. If a side of `size` is zero,
/// the result contains infinities and NaNs.
extern "C" KELVAR_EXPORT QRectF CGRectAspectFittingSize(QSizeF size, QRectF rect);
