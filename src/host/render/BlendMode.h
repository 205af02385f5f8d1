#pragma once

#include <QImage>
#include <QPainter>
#include <QPoint>
#include <optional>

namespace kelvar::render {

/// How a colour is mixed with what lies below it.
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
  PlusDarker,
  PlusLighter
};

/// `Normal` for numbers that stand for no mode.
BlendMode blendModeFrom(int number);

/// The painter's mode that does the same; none for the five that it does not know.
std::optional<QPainter::CompositionMode> compositionOf(BlendMode mode);

/// Mixes premultiplied pixels onto others of the same size, in place, by a mode that the painter
/// does not know. The first four are the non-separable modes of the W3C's "Compositing and
/// Blending Level 1", section 13.
void mix(const QImage& above, QImage* below, BlendMode mode);

}  // namespace kelvar::render
