#pragma once

#include "geometry/KVShape.h"
#include "host/LayerSettings.h"
#include "host/Mapping.h"
#include "host/SketchDocument.h"

namespace kelvar {

/// A design on its way onto a layer of a document: corner points, shape, warp, fill into the
/// layer's bounds, crop, and the layer's fill.
///
/// Scripts walk the same way with the same classes, as in plugin/Kelvar.sketchplugin, and get the
/// same bytes: what is computed here in between has to stay what a script can ask those classes
/// for.
///
/// The picture covers the layer's frame, whose sides are rounded up to whole pixels: stretched over
/// the frame again, the design's corners lie on the layer's corners whatever the frame's fractions.
class KELVAR_EXPORT LayerMapping {
 public:
  /// `layer` is one that `objectionTo` has nothing against.
  LayerMapping(SketchLayerRef layer, const LayerSettings& settings);

  /// The layer's corners in its own coordinates, clockwise, as the layer iterator reads them.
  static PointList cornersOf(const SketchLayerRef& layer);
  /// Whether a design can be mapped onto the layer.
  static bool canMapOnto(const SketchLayerRef& layer) { return objectionTo(layer).isNull(); }
  /// Why not, as a sentence about the layer; null when it can.
  static QString objectionTo(const SketchLayerRef& layer);

  /// Why the picture cannot be held; null when it can.
  QString objection() const;
  /// The size of the picture in pixels.
  QSizeF pixelSize() const { return pixelSize_; }
  /// The pixels at which a design is drawn that can be drawn at any size.
  QSizeF vectorSize() const;

  /// The design in perspective in the layer's frame, transparent beside the shape. Not valid when
  /// it cannot be mapped. The design is not changed.
  ImageRef picture(const ImageRef& design, warp::Sampling sampling = warp::Sampling::Best,
                   int threads = 0) const;

  /// Makes the picture the layer's topmost fill, stretched over its frame, in the place of the one
  /// that was mapped before; switches those below it off; remembers the settings on the layer.
  /// False, and `*error` says why, when it cannot be packed.
  bool fill(SketchDocument& document, const ImageRef& picture, QString* error);
  /// Takes the picture that was mapped off the layer again, switches the fill below it on, and
  /// forgets the settings. A layer onto which nothing was mapped stays as it is.
  static void clear(SketchDocument& document, SketchLayer& layer);

 private:
  KVShape shape() const;
  /// Of the shape, on a ground that has room for the shape and for the frame.
  Mapping mapping() const;

  SketchLayerRef layer_;
  LayerSettings settings_;
  /// The frame's size and the points, in the picture's pixels.
  QSizeF pixelSize_;
  PointList points_;
};

}  // namespace kelvar
