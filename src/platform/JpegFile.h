#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>

namespace kelvar {

/// The picture in a JPEG file as opaque BGRA in sRGB, turned upright. Null and the reason in
/// `*error` when the file is cut short or damaged, where viewers would show half a picture, or
/// beyond ImageFile's limits.
QImage readJpeg(const QByteArray& file, QString* error);

/// The premultiplied picture over white, at quality 92 without colour subsampling. Empty and the
/// reason in `*error` when it cannot be packed.
QByteArray packJpeg(const QImage& image, QString* error);

}  // namespace kelvar
