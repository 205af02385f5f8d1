#pragma once

#include <cstdint>

#include "geometry/KVImageTransform.h"
#include "geometry/PointList.h"
#include "platform/Image.h"

namespace kelvar {

/// A design on its way onto a four-cornered shape: the drawn points, normalised; the flip and the
/// quarter turns; the scale; the warp. A plain value that says what is to be done; the operations
/// do it, without a state and from any thread.
struct KELVAR_EXPORT Mapping {
  /// The shape's four corners in drawing order, of either winding, in pixels, y down. The first is
  /// the design's top-left corner. With any other number of points there is no mapping.
  PointList path{};
  /// Factor on the shape; 0 is read as 1.
  double scale = 1;
  /// Quarter turns of the design within the shape, counter-clockwise on screen, after the flip.
  uint64_t rotation = 0;
  /// Whether the design's left and right are swapped.
  bool flipped = false;
  /// What `createOutput` covers; see `KVImageTransform::extent`.
  QSizeF extent{0, 0};
  warp::Sampling sampling = warp::Sampling::Bilinear;
  /// Threads to use, 0 for one each processor. The result does not depend on it.
  int threads = 0;

  /// Size and corners of what `createOutput` gives: where the design's top-left, top-right,
  /// bottom-right and bottom-left corner lie in its pixels.
  KVImageTransform::Placement placement() const;

  /// The design in perspective, of the shape's bounding box times the scale, transparent beside the
  /// shape. Not valid, and of size (0, 0), in the cases that `KVImageTransform::createOutput`
  /// names.
  ImageRef createOutput(const ImageRef& design) const;

  /// The same four corners in the pixels of a photo, where nothing is moved or scaled.
  warp::Quad quadOnPhoto() const;

  /// A copy of the photo with the design laid over it at the shape, which may reach past the
  /// photo's edges. The design is sampled straight on the photo's pixels, and only on those that
  /// the shape meets. The scale is the least number of samples that a pixel takes along each axis,
  /// up to 16. Not valid without a photo or a design, and for corners that have no map.
  ImageRef layOnto(const ImageRef& design, const ImageRef& photo) const;

  /// The same into a photo's own pixels. False, and nothing is changed, where `layOnto` gives no
  /// valid picture.
  bool layInto(QImage* photo, const ImageRef& design) const;

  /// The pixels that a design needs to be nowhere magnified on `quad`, for designs that can be
  /// drawn at any size: the finest resolution at a corner, at most four times the mean along the
  /// longer edge. (0, 0) for corners that have no map.
  static QSizeF neededSize(const warp::Quad& quad);

  /// At what size a vector design is drawn for `quad`: `finer` times the needed one, at least a
  /// pixel and as far as a picture can be held.
  static QSizeF vectorSize(const warp::Quad& quad, double finer = 1);

  /// The same for the shape on a photo, where the scale asks for finer samples.
  QSizeF vectorSizeOnPhoto() const;

 private:
  KVImageTransform transform(const ImageRef& design) const;
};

}  // namespace kelvar
