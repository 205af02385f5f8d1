#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>

namespace kelvar {

/// The picture in a WebP file as premultiplied BGRA in sRGB. Null and the reason in `*error` when
/// the file is cut short, damaged, an animation or beyond ImageFile's limits.
QImage readWebP(const QByteArray& file, QString* error);

/// The premultiplied picture, lossless. Empty and the reason in `*error` when it cannot be packed:
/// WebP has no side longer than 16383 pixels.
QByteArray packWebP(const QImage& image, QString* error);

}  // namespace kelvar
