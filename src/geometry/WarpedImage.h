#pragma once

#include <QImage>

#include "pixels/warp/Warp.h"

namespace kelvar {

/// An image of `width` by `height` pixels with all of `source`, premultiplied, in perspective on
/// `quad`, whose corners are in pixels of the result. Null if there is no source or the quad is not
/// a valid perspective quad; also, with a log line, if the source or the result exceeds the image
/// limits.
QImage warpedImage(const QImage& source, double width, double height, const warp::Quad& quad,
                   const warp::Options& options);

}  // namespace kelvar
