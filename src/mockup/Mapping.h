#pragma once

#include <QPointF>
#include <array>

#include "pixels/Result.h"
#include "platform/Export.h"
#include "platform/image/Image.h"
#include "scene/MappingOptions.h"
#include "scene/QuadPlacement.h"

namespace kelvar {

/// Maps a design onto a four-cornered shape: normalizes the corners, applies flip and quarter
/// turns, scales, warps. A plain value; the operations are stateless and run on any thread. They
/// fail for corners that `validateQuad` rejects, if an input is missing, and beyond the image
/// limits.
struct KELVAR_EXPORT Mapping {
  /// The shape's corners in order around it, in either direction, in pixels, y down. The first is
  /// the design's top-left corner.
  warp::Quad corners{};
  MappingOptions options{};
  /// The area that `createOutput` covers; see `KVImageTransform::extent`.
  QSizeF extent{0, 0};

  /// Size and corners of the output of `createOutput`.
  Placement placement() const;

  /// The design in perspective, as large as the shape's bounding box times the quality and
  /// transparent outside the shape.
  Result<ImageRef> createOutput(const ImageRef& design) const;

  /// Where the design's corners go on a photo, in its pixels: the shape's corners, in the design's
  /// order.
  warp::Quad quadOnPhoto() const;

  /// A copy of the photo with the design composited over it at the shape, which may reach past the
  /// photo's edges. The design is sampled directly on the photo's pixels, and only on those that
  /// the shape touches. The quality is the minimum number of samples per pixel along each axis, up
  /// to 16.
  Result<ImageRef> compositeOnto(const ImageRef& design, const ImageRef& photo) const;

  /// The same, directly in the photo's own pixels, which a failure leaves unchanged.
  Result<void> compositeInto(QImage* photo, const ImageRef& design) const;

  /// The size in pixels that a design needs so that it is not magnified anywhere on `quad`, for
  /// designs that can be drawn at any size: the highest resolution at any corner, but at most four
  /// times the mean along the longer edge. (0, 0) if the corners are not a valid quad.
  static QSizeF requiredSourceSize(const warp::Quad& quad);

  /// The size at which to draw a vector design for `quad`: `finer` times the required size, but at
  /// least one pixel and within the image limits.
  static QSizeF rasterizationSize(const warp::Quad& quad, double finer = 1);

  /// The same for the shape on a photo, where the quality sets the number of samples per pixel.
  QSizeF rasterizationSizeOnPhoto() const;

  /// Whether an image of that size is within the limits.
  static Result<void> validateOutputSize(double width, double height);
};

/// The same corners without Qt.
KELVAR_EXPORT warp::Quad quadFrom(const std::array<QPointF, 4>& corners);

}  // namespace kelvar
