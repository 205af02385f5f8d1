#pragma once

#include "pixels/Export.h"
#include "pixels/PixelView.h"

namespace kelvar {

/// How a color is blended with the color below it. Except for the last two modes, the formulas are
/// those of the W3C's "Compositing and Blending Level 1", sections 10 and 13.
enum class BlendMode {
  Normal,
  Darken,
  Multiply,
  ColorBurn,
  Lighten,
  Screen,
  ColorDodge,
  Overlay,
  SoftLight,
  HardLight,
  Difference,
  Exclusion,
  Hue,
  Saturation,
  Color,
  Luminosity,
  PlusDarker,  ///< White minus the sum of both colors' differences from white.
  PlusLighter  ///< The sum of both colors.
};

/// Blends `above` onto `below` in place. Both are 8-bit BGRA, premultiplied, and of the same size.
/// Safe to call from several threads on different rows.
KELVAR_PIXELS_EXPORT void blend(const ConstPixelView& above, const PixelView& below,
                                BlendMode mode);

}  // namespace kelvar
