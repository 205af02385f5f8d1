#pragma once

#include <QByteArray>
#include <QImage>
#include <QSizeF>
#include <QString>
#include <chrono>
#include <functional>

namespace kelvar {

/// What one SVG may take.
struct SvgLimits {
  std::chrono::seconds time{10};
  qint64 memory = qint64{1} << 30;  ///< In bytes, beside the picture's pixels.
};

/// Draws an SVG at the size that `vectorSize` makes of its natural one (`*natural`), or at that if
/// it is empty. Null and the reason in `*error` when the SVG is no XML, tells no size, when a size
/// is absurd or beyond ImageFile's limits, or when it takes more than `limits`. Any thread.
///
/// The file draws only what it carries: pictures, style sheets and entities from elsewhere are
/// left out before the renderer sees them, and so are embedded pictures that are no bitmaps, which
/// could refer on.
///
/// It is drawn by a process of its own, kelvar-svg, which is killed at its limits; the pixels come
/// back in shared memory. Nothing less bounds a design: what it costs follows from lengths, dashes,
/// joins, areas and references as the renderer meets them, so that a look at the file beforehand
/// either misses some or refuses honest ones, and a renderer that has begun takes no notice of a
/// watchdog in its own process. A design that makes it crash ends with a sentence as well.
QImage readSvg(const QByteArray& file, const std::function<QSizeF(const QSizeF&)>& vectorSize,
               QSizeF* natural, QString* error, const SvgLimits& limits = {});

}  // namespace kelvar
