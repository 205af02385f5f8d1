#pragma once

#include <vector>

#include "geometry/KVRect.h"
#include "mockup/LayerSettings.h"
#include "mockup/Mapping.h"
#include "sketch/document/SketchDocument.h"

namespace kelvar {

/// Maps a design onto a layer of a document: corner points, shape, warp, fill into the layer's
/// bounds, crop, and the layer's fill.
///
/// Scripts run the same steps with the `KV…` classes, as in plugin/Kelvar.sketchplugin, and get the
/// same bytes: every step here must remain one that those classes offer.
///
/// The image covers the layer's frame, whose sides are rounded up to whole pixels. When it is
/// stretched over the frame again, the design's corners coincide with the layer's corners even if
/// the frame's sides are fractions.
class KELVAR_EXPORT LayerMapping {
 public:
  /// Requires a `layer` that `validateTarget` accepts.
  LayerMapping(SketchLayerRef layer, const LayerSettings& settings);

  /// The layer's corners in its own coordinates, clockwise, as the layer iterator reads them.
  static std::vector<warp::Point> cornersOf(const SketchLayerRef& layer);
  /// Whether a design can be mapped onto the layer.
  static bool canMapOnto(const SketchLayerRef& layer) { return validateTarget(layer).has_value(); }
  /// The same as a result. The error message calls the layer "it".
  static Result<void> validateTarget(const SketchLayerRef& layer);

  /// Whether an image of `pixelSize` is within the limits.
  Result<void> validateSize() const;
  /// The size of the image in pixels.
  QSizeF pixelSize() const { return pixelSize_; }
  /// The size at which to draw a vector design.
  QSizeF rasterizationSize() const;

  /// The design in perspective in the layer's frame, transparent outside the shape.
  Result<ImageRef> createImage(const ImageRef& design) const;

  /// Makes the image the layer's topmost fill, stretched over its frame, replacing the one that was
  /// mapped before; disables the fills below it; remembers the settings on the layer.
  Result<void> fill(SketchDocument& document, const ImageRef& image);
  /// Removes the mapped image from the layer, enables the fill below it, and forgets the settings.
  /// A layer onto which nothing was mapped stays as it is.
  static void clear(SketchDocument& document, SketchLayer& layer);

 private:
  /// The frame, relative to the corners after they are moved so that no coordinate is negative.
  KVRectRef croppingRect() const;
  /// The mapping onto the shape, on a canvas large enough for the shape and the frame.
  Mapping mapping() const;

  SketchLayerRef layer_;
  LayerSettings settings_;
  /// The frame's size and the corners, in the image's pixels.
  QSizeF pixelSize_;
  warp::Quad corners_{};
};

}  // namespace kelvar
