#pragma once

#include <QIODevice>
#include <QImage>

namespace kelvar {

/// Writes premultiplied BGRA pixels as a PNG: RGB when every pixel is opaque; RGB with one colour
/// declared transparent when every pixel is opaque or clear; else RGBA.
///
/// Bands of rows are filtered and deflated side by side on `threads` threads, the caller's among
/// them (0: one for each processor), and written in order as they are done; a few megabytes are
/// held, whatever the picture's size. The same pixels make the same file at each run, with any
/// number of threads: documents name pictures by their hashes. Each band takes the filter whose
/// differences carry least information. False when the device took not all; its errorString() says
/// why.
bool writePng(const QImage& image, QIODevice* device, int threads = 0);

}  // namespace kelvar
