#pragma once

#include "geometry/KVRect.h"
#include "platform/Image.h"

namespace kelvar {

class ClassInfo;

/// The steps around the warp that need pixels: to a bitmap, to another size, into a frame, cut.
///
/// No state, no instances. Each draws into a picture of its own. A null frame is the zero
/// rectangle. A picture that cannot be drawn (`Image::isValid` is false, or null) is logged as
/// "Invalid Image" and gives null where that is said.
class KELVAR_EXPORT KVImage {
 public:
  KVImage() = delete;
  static const ClassInfo& theClass();

  /// The picture as a bitmap of its nominal size cut down to whole pixels, drawn unrounded from the
  /// bottom left: what is over is lost at the top and on the right. Null when nothing is left.
  static QImage getCGImage(const ImageRef& image);

  /// A new picture of this size. The given picture's own nominal size is changed to it, and stays
  /// changed. Null for an invalid picture.
  static ImageRef scaleImage(const ImageRef& image, const QSizeF& size);

  /// The picture as large as it fits, in proportion, into the frame's size times `scale` (0 is read
  /// as 1), centred. Trimmed, the result has the fitted size; else that of the scaled frame. It
  /// always casts a shadow, 25 % black with a blur of one point, moved by `shadow` (a positive
  /// height moves it up): at (0, 0) it is a faint rim. Null for an invalid picture.
  static ImageRef fillImage(const ImageRef& image, const KVRectRef& insideBounds, double scale,
                            bool shouldTrimTransparent, const QSizeF& shadow = {0, 0});

  /// The part of `getCGImage` within the frame, whose origin is the top-left pixel and y down:
  /// clipped to the bitmap and widened to whole pixels. The nominal size is the frame's, also where
  /// it was clipped. Without pixels when nothing is left.
  static ImageRef cropImage(const ImageRef& image, const KVRectRef& withBounds);
};

}  // namespace kelvar
