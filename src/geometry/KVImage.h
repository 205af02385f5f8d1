#pragma once

#include "geometry/KVRect.h"
#include "platform/image/Image.h"

namespace kelvar {

class ClassInfo;

/// The steps around the warp that need pixels: rasterize, resize, fit into a frame, crop.
///
/// No state, no instances. Each operation draws into a new image. A null frame is the zero
/// rectangle. An invalid image (null, or `Image::isValid` is false) is logged as "Invalid Image";
/// the result is then null where stated.
class KELVAR_EXPORT KVImage {
 public:
  KVImage() = delete;
  static const ClassInfo& staticClassInfo();

  /// The image as a bitmap of its nominal size truncated to whole pixels, drawn at its exact size
  /// from the bottom left, so that any excess is cut off at the top and on the right. Null if
  /// nothing is left.
  static QImage getCGImage(const ImageRef& image);

  /// A new image of this size. The nominal size of the given image is changed to it as well. Null
  /// for an invalid image.
  static ImageRef scaleImage(const ImageRef& image, const QSizeF& size);

  /// The image scaled proportionally to fit the frame's size times `scale` (0 is read as 1),
  /// centered. If trimmed, the result has the fitted size; otherwise, the size of the scaled frame.
  /// The image always casts a shadow, 25% black with a blur of one point, offset by `shadow` (a
  /// positive height moves it up). With an offset of (0, 0), the shadow is a faint outline. Null
  /// for an invalid image.
  static ImageRef fillImage(const ImageRef& image, const KVRectRef& insideBounds, double scale,
                            bool shouldTrimTransparent, const QSizeF& shadow = {0, 0});

  /// The part of `getCGImage` within the frame (origin at the top-left pixel, y down), clipped to
  /// the bitmap and widened to whole pixels. The nominal size is the frame's, even if it was
  /// clipped. The result has no pixels if nothing is left.
  static ImageRef cropImage(const ImageRef& image, const KVRectRef& withBounds);
};

}  // namespace kelvar
