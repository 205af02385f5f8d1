#pragma once

#include <cstdint>
#include <string_view>

#include "pixels/Export.h"
#include "pixels/Result.h"
#include "pixels/warp/Warp.h"

namespace kelvar {

/// How a design is mapped onto a four-cornered shape. The command line, arrangement files,
/// documents, the panel and scripts all set these.
struct MappingOptions {
  static constexpr double kMinQuality = 0.001;
  static constexpr double kMaxQuality = 1000;

  /// Pixels of the output per unit of the shape; 0 is read as 1. On a photo, which has its own
  /// pixels, the minimum number of samples per pixel along each axis.
  double quality = 1;
  /// Quarter turns of the design within the shape, counterclockwise, after the flip: 0 to 3.
  int rotation = 0;
  /// Whether the design is mirrored horizontally.
  bool flipped = false;
  /// In a document, whether the result is visible where the layer's own artboard is used as a
  /// design. On a photo, whether the design is shown.
  bool includedInArtboards = true;
  warp::Sampling sampling = warp::Sampling::Best;

  /// The effective scale factor: `quality`, with 0 read as 1.
  double scale() const { return quality == 0 ? 1 : quality; }

  bool operator==(const MappingOptions&) const = default;
};

/// Succeeds for 0 and for numbers from `kMinQuality` to `kMaxQuality`. `name` is the option's name
/// in the user interface, such as "--scale"; the error message begins with it.
KELVAR_PIXELS_EXPORT Result<void> validateQuality(double quality, std::string_view name);

/// Succeeds for 0 to 3 quarter turns. If the number is larger, or looks like degrees, the message
/// says which value to use instead.
KELVAR_PIXELS_EXPORT Result<void> validateRotation(int64_t rotation, std::string_view name);

}  // namespace kelvar
