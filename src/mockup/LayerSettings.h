#pragma once

#include <optional>

#include "scene/MappingOptions.h"
#include "sketch/document/SketchLayer.h"

namespace kelvar {

/// The settings that a layer stores about the design mapped onto it, so that the design can be
/// mapped again: members of the layer's "userInfo" under "io.kelvarlabs.kelvar".
struct KELVAR_EXPORT LayerSettings {
  /// The identifier of the artboard that is the design; null when the design came from elsewhere.
  QString artboard{};
  /// The quality is the number of pixels of the image per unit of the layer. The sampling is not
  /// remembered.
  MappingOptions options{};
  /// The reference of the image in the layer's fills, "images/…".
  QString image{};

  /// None when nothing was mapped onto the layer. Values that cannot be read take their defaults.
  static std::optional<LayerSettings> of(const SketchLayer& layer);
  void rememberOn(SketchLayer& layer) const;
  static void forgetOn(SketchLayer& layer);

  bool operator==(const LayerSettings&) const = default;
};

}  // namespace kelvar
