#pragma once

#include <QByteArray>
#include <QImage>

namespace kelvar {

/// The image converted to sRGB from the ICC profile in its file. Unchanged when there is no
/// profile, when it is sRGB, or when Qt does not support its kind (gray, CMYK, device links): then
/// the values are read as sRGB, as other viewers do.
QImage toSRgb(const QImage& image, const QByteArray& iccProfile);

/// The image's colors in another color space, in the same format; colors outside that space are
/// clipped to the nearest ones in it.
QImage fromDisplayP3(const QImage& image);
QImage toDisplayP3(const QImage& image);

}  // namespace kelvar
