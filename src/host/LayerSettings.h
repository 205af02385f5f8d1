#pragma once

#include <cstdint>
#include <optional>

#include "host/SketchLayer.h"

namespace kelvar {

/// What is remembered on a layer about the design that was mapped onto it, so that it can be mapped
/// again: members of the layer's "userInfo" under "io.kelvarlabs.kelvar".
struct KELVAR_EXPORT LayerSettings {
  /// The identifier of the artboard that is the design; null when the design came from elsewhere.
  QString artboard{};
  /// Pixels of the picture for each point of the layer.
  double quality = 1;
  /// Quarter turns of the design within the layer, counter-clockwise, 0 to 3.
  uint64_t rotation = 0;
  bool isFlipped = false;
  /// Whether the picture is seen where the layer's own artboard serves as a design.
  bool isIncludedInArtboards = true;
  /// The reference of the picture in the layer's fills, "images/…".
  QString image{};

  /// None when nothing was mapped onto the layer. What cannot be read is as by default.
  static std::optional<LayerSettings> of(const SketchLayer& layer);
  void rememberOn(SketchLayer& layer) const;
  static void forgetOn(SketchLayer& layer);

  bool operator==(const LayerSettings&) const = default;
};

}  // namespace kelvar
