#include "geometry/WarpedImage.h"

#include "geometry/PointList.h"
#include "platform/Log.h"
#include "platform/image/ImageFile.h"

namespace kelvar {

QImage warpedImage(const QImage& source, double width, double height, const warp::Quad& quad,
                   const warp::Options& options) {
  if (source.isNull() || !warp::Homography::fromRectangle(source.width(), source.height(), quad)) {
    return {};
  }
  if (!fitsImageLimits(width, height) || !fitsImageLimits(source.width(), source.height())) {
    logLine(u"Warp: from %@ by %@ to %@ by %@ pixels is more than can be held",
            {stringFromNumber(source.width()), stringFromNumber(source.height()),
             stringFromNumber(width), stringFromNumber(height)});
    return {};
  }
  QImage output(int(width), int(height), QImage::Format_ARGB32_Premultiplied);
  if (output.isNull()) return {};
  const bool mapped = warp::warp(
      {source.constBits(), source.width(), source.height(), source.bytesPerLine()},
      {output.bits(), output.width(), output.height(), output.bytesPerLine()}, quad, options);
  return mapped ? output : QImage();
}

}  // namespace kelvar
