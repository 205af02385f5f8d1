#pragma once

#include <QByteArray>
#include <QImage>

namespace kelvar {

/// The picture in sRGB, from the ICC profile that its file carries. Unchanged when there is no
/// profile, when it is sRGB itself, or when it is of a kind that Qt does not know (grey, CMYK,
/// device links): then the numbers are taken as sRGB, as viewers do.
QImage toSRgb(const QImage& image, const QByteArray& iccProfile);

/// The picture's colours in other numbers, in the same format; what the other space cannot show
/// becomes the nearest that it can.
QImage fromDisplayP3(const QImage& image);
QImage toDisplayP3(const QImage& image);

}  // namespace kelvar
