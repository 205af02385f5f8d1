#pragma once

#include <cstdint>

#include "geometry/PointList.h"
#include "pixels/warp/Warp.h"
#include "platform/image/Image.h"
#include "runtime/Object.h"
#include "scene/QuadPlacement.h"

namespace kelvar {

/// Maps an image onto four given points in perspective.
///
/// Set the input first, because that resets the corners; then set the corners, scale, rotation and
/// flip in any order; then call `createOutput`, as often as needed. Corners are in the target
/// shape's units, y down.
class KELVAR_EXPORT KVImageTransform : public Object {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  ImageRef input() const { return input_; }
  /// Also sets the corners to the image's own rectangle, in its nominal size.
  void setInput(ImageRef input);

  /// Scale factor for the four points; exactly 0 counts as 1.
  double scale() const { return scale_; }
  void setScale(double scale) { scale_ = scale; }
  /// Quarter turns of the image within the shape, counterclockwise on screen, applied after the
  /// flip.
  uint64_t rotation() const { return rotation_; }
  void setRotation(uint64_t rotation) { rotation_ = rotation; }
  /// Whether left and right are swapped.
  bool flipped() const { return flipped_; }
  void setFlipped(bool flipped) { flipped_ = flipped; }
  warp::Sampling sampling() const { return sampling_; }
  void setSampling(warp::Sampling sampling) { sampling_ = sampling; }

  /// The size of the output in the corners' units, from (0, 0), which is the origin of the corners.
  /// Parts outside the quad are empty. If this size is empty, as by default, the output is the
  /// quad's bounding box.
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

  /// Where the image's top-left, top-right, bottom-right and bottom-left corners go, with flip and
  /// rotation applied, unscaled.
  PointList points() const;

  /// The output's size and the scaled `points` in its pixels. Without an extent, the output covers
  /// their bounding box; with one, the scaled extent.
  Placement placement() const;

  /// The warped image, with one point per pixel, transparent outside the quad. All pixels of the
  /// input are mapped, whatever its nominal size. Invalid and of size (0, 0) if there is no input,
  /// if the quad is degenerate, and, with a log line, beyond 32768 pixels per side or 1 GiB. Uses
  /// `threads` threads, or one per processor if 0; the result does not depend on that.
  ImageRef createOutput(int threads = 0) const;

  /// All pixels of the image.
  QImage getCIImageFromNSImage(const ImageRef& image) const;
  /// An image of these pixels, one point each; of size (0, 0) if there are none.
  ImageRef getNSImage(const QImage& pixels) const;

 private:
  warp::Quad quad() const;

  ImageRef input_;
  double scale_ = 0;
  uint64_t rotation_ = 0;
  bool flipped_ = false;
  warp::Sampling sampling_ = warp::Sampling::Bilinear;
  QSizeF extent_{0, 0};
  QPointF tl_, tr_, br_, bl_;
};

}  // namespace kelvar
