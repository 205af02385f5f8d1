#pragma once

#include "mockup/Arrangement.h"
#include "mockup/LayerSettings.h"
#include "sketch/document/SketchDocument.h"
#include "sketch/document/SketchJson.h"

namespace kelvar {

/// A four-cornered layer onto which designs are mapped, and its state when its document was opened,
/// to be restored.
class MockupLayer {
 public:
  /// `layer` can take a design and is inside `backdrop`, whose coordinates `toImage` maps to
  /// pixels.
  MockupLayer(const SketchLayerRef& layer, const SketchLayerRef& backdrop,
              const QTransform& toImage);

  const SketchLayerRef& layer() const { return layer_; }
  /// The shape as it was opened, without its design.
  Arrangement::Shape shape() const;
  /// The settings stored on the layer; none if nothing was mapped onto it.
  const std::optional<LayerSettings>& settings() const { return settings_; }

  /// Restores the layer member for member.
  void restore(SketchDocument& document) const;

 private:
  using Json = std::shared_ptr<const SketchJson>;
  Json copyOf(const char* member) const;
  void restore(const char* member, const Json& value) const;

  SketchLayerRef layer_;
  std::array<QPointF, 4> corners_;
  bool isMirrored_ = false;
  std::optional<LayerSettings> settings_;
  /// Null if the layer had none.
  Json style_;
  Json userInfo_;
};

}  // namespace kelvar
