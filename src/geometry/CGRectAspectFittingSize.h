#pragma once

#include <QRectF>

#include "platform/Export.h"

/// The largest rectangle with `size`'s proportions that fits into one of `rect`'s size, centred
/// there. The origin of `rect` is not added: offset the result by it where that is wanted. A size
/// with a zero side gives infinities and not-a-numbers.
extern "C" KELVAR_EXPORT QRectF CGRectAspectFittingSize(QSizeF size, QRectF rect);
