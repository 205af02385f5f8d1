#pragma once

#include "geometry/KVRect.h"
#include "sketch/document/SketchLayer.h"

namespace kelvar {

/// A rectangle that scripts read from a layer: what they set in it moves and resizes the layer. To
/// everybody else it is a copy. One without a layer is an ordinary rectangle. Raises for numbers
/// that are not finite.
class LayerRect : public KVRect {
 public:
  explicit LayerRect(SketchLayerRef layer) : layer_(std::move(layer)) {}

  /// Reads the layer again, as it may have been moved meanwhile.
  virtual void read() = 0;
  /// Moves and resizes the layer.
  virtual void store() = 0;
  void assign(const QRectF& rect);
  const SketchLayerRef& layer() const { return layer_; }

 private:
  const SketchLayerRef layer_;
};

/// A layer's frame, in the coordinates of its parent.
class LayerFrame : public LayerRect {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  /// Of no layer, with the zero rectangle, for null.
  explicit LayerFrame(SketchLayerRef layer);
  static std::shared_ptr<LayerFrame> withRect(const QRectF& rect);
  void read() override;
  void store() override;
};

/// A layer's frame in the coordinates of its page, upright even if the layer is not.
class AbsoluteRect : public LayerRect {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  explicit AbsoluteRect(SketchLayerRef layer);
  void read() override;
  void store() override;

  /// The same in the coordinates of the artboard around the layer, if there is one.
  double rulerX() const;
  double rulerY() const;
  void setRulerX(double x);
  void setRulerY(double y);
};

/// From the coordinates of a layer's parent to those of its page.
QTransform parentToPage(const SketchLayer& layer);
/// The layer's frame on its page.
QRectF frameOnPage(const SketchLayer& layer);

}  // namespace kelvar
