#pragma once

#include <QImage>

#include "geometry/warp/Warp.h"

namespace kelvar {

/// A picture of `width` by `height` whole pixels with all of `source`, premultiplied, in
/// perspective on `quad`, given in the result's pixels. Null without a source, for a quad that has
/// no map and, with a line in the log, where source or result are beyond what can be held.
QImage warpedImage(const QImage& source, double width, double height, const warp::Quad& quad,
                   const warp::Options& options);

}  // namespace kelvar
