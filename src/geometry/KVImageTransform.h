#pragma once

#include <cstdint>

#include "geometry/PointList.h"
#include "geometry/warp/Warp.h"
#include "platform/Image.h"
#include "runtime/Object.h"

namespace kelvar {

/// Carries a picture's four corners to four given points and everything between in perspective.
///
/// Set the input first, since it resets the corners; then the corners, the scale, the rotation
/// and the flip in any order; then call `createOutput`, as often as wanted. Corners are in the
/// target shape's units, y down.
class KELVAR_EXPORT KVImageTransform : public Object {
 public:
  static const ClassInfo& theClass();
  const ClassInfo& classInfo() const override { return theClass(); }

  ImageRef input() const { return input_; }
  /// Also sets the corners to the picture's own rectangle, in its nominal size.
  void setInput(ImageRef input);

  /// Factor on the four points; exactly 0 is read as 1.
  double scale() const { return scale_; }
  void setScale(double scale) { scale_ = scale; }
  /// Quarter turns of the picture within the shape, counter-clockwise on screen, after the flip.
  uint64_t rotation() const { return rotation_; }
  void setRotation(uint64_t rotation) { rotation_ = rotation; }
  /// Whether left and right are swapped.
  bool flipped() const { return flipped_; }
  void setFlipped(bool flipped) { flipped_ = flipped; }
  warp::Sampling sampling() const { return sampling_; }
  void setSampling(warp::Sampling sampling) { sampling_ = sampling; }

  /// What the output covers, in the corners' units: from (0, 0), where they are measured from, to
  /// here, whatever of it the quad leaves empty. Empty, as at first, it is the quad's bounding box.
  QSizeF extent() const { return extent_; }
  void setExtent(const QSizeF& extent) { extent_ = extent; }

  QPointF tl() const { return tl_; }
  void setTl(const QPointF& tl) { tl_ = tl; }
  QPointF tr() const { return tr_; }
  void setTr(const QPointF& tr) { tr_ = tr; }
  QPointF br() const { return br_; }
  void setBr(const QPointF& br) { br_ = br; }
  QPointF bl() const { return bl_; }
  void setBl(const QPointF& bl) { bl_ = bl; }

  /// Where the picture's top-left, top-right, bottom-right and bottom-left corners go, flip and
  /// rotation applied, unscaled.
  PointList points() const;

  /// Where the output lies: its size in whole pixels, which may be more than can be held, and the
  /// scaled `points` in its pixels, y down from its top edge. Without an extent it covers their
  /// bounding box, widened to whole pixels on a grid that is anchored at the lowest point and at
  /// whole x; with one the scaled extent, widened downwards and to the right.
  struct Placement {
    double width = 0;
    double height = 0;
    warp::Quad quad;
  };
  Placement placement() const;

  /// The warped picture, one point a pixel, transparent beside the quad. All pixels of the input
  /// are mapped, whatever its nominal size. Of size (0, 0) and not valid without an input, for
  /// corners that have no map, and, with a line in the log, beyond 32768 pixels a side or 1 GiB.
  /// Uses `threads` threads, 0 for one each processor; the result does not depend on it.
  ImageRef createOutput(int threads = 0) const;

  /// The picture's pixels, all of them.
  QImage getCIImageFromNSImage(const ImageRef& image) const;
  /// A picture of these pixels, one point each; of size (0, 0) when there are none.
  ImageRef getNSImage(const QImage& pixels) const;

 private:
  ImageRef input_;
  double scale_ = 0;
  uint64_t rotation_ = 0;
  bool flipped_ = false;
  warp::Sampling sampling_ = warp::Sampling::Bilinear;
  QSizeF extent_{0, 0};
  QPointF tl_, tr_, br_, bl_;
};

}  // namespace kelvar
