#pragma once

#include <QByteArray>
#include <QImage>
#include <QSizeF>
#include <QString>
#include <functional>

namespace kelvar {

/// Draws an SVG at the size that `vectorSize` makes of its natural one (`*natural`), or at that if
/// it is empty. Null and the reason in `*error` when the SVG is no XML, tells no size, or when a
/// size is absurd or beyond ImageFile's limits.
///
/// The file draws only what it carries: pictures, style sheets and entities from elsewhere are
/// left out before the renderer sees them, and so are embedded pictures that are no bitmaps, which
/// could refer on.
QImage readSvg(const QByteArray& file, const std::function<QSizeF(const QSizeF&)>& vectorSize,
               QSizeF* natural, QString* error);

}  // namespace kelvar
