#pragma once

#include <QIODevice>
#include <QImage>

namespace kelvar {

/// Writes premultiplied BGRA pixels as a PNG: RGB when every pixel is opaque; RGB with one colour
/// declared transparent when every pixel is opaque or clear; else RGBA.
///
/// Bands of rows are filtered and deflated side by side, by ISA-L, on a thread for each
/// processor, the caller's among them, and written in order as they are done; a few megabytes are
/// held, whatever the picture's size. The file is the same for any number of threads. Each band
/// takes the filter whose differences carry least information. False when the device took not all;
/// its errorString() says why.
bool writePng(const QImage& image, QIODevice* device);

}  // namespace kelvar
