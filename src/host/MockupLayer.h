#pragma once

#include "host/Arrangement.h"
#include "host/LayerSettings.h"
#include "host/SketchDocument.h"

namespace kelvar {

/// A four-cornered layer on which designs are tried out: how it was when its document was opened,
/// and the way back to that.
class MockupLayer {
 public:
  /// `layer` is within `ground`, whose coordinates `toPicture` carries to pixels, and can take a
  /// design.
  MockupLayer(const SketchLayerRef& layer, const SketchLayerRef& ground,
              const QTransform& toPicture);

  const SketchLayerRef& layer() const { return layer_; }
  /// As it was opened, but for the design, which the document has to find.
  Arrangement::Shape shape() const;
  /// What was remembered on it; none when nothing was mapped.
  const std::optional<LayerSettings>& settings() const { return settings_; }
  /// What is to be remembered for the shape, but for the design.
  LayerSettings settingsFor(const Arrangement::Shape& shape) const;

  /// Member for member as it was opened.
  void restore(SketchDocument& document) const;

 private:
  using Json = std::shared_ptr<const nlohmann::ordered_json>;
  Json copyOf(const char* member) const;
  void restore(const char* member, const Json& value) const;

  SketchLayerRef layer_;
  std::array<QPointF, 4> corners_;
  bool isMirrored_ = false;
  std::optional<LayerSettings> settings_;
  /// Null where the layer had none.
  Json style_;
  Json userInfo_;
};

}  // namespace kelvar
