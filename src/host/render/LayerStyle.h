#pragma once

#include <QColor>
#include <QList>
#include <QPointF>
#include <nlohmann/json_fwd.hpp>

#include "host/render/BlendMode.h"

namespace kelvar::render {

/// How a layer is painted, read from the "style" of its JSON. Parts that are switched off are left
/// out. Lengths are in document units.

struct GradientStop {
  double position = 0;
  QColor color;
};

struct Gradient {
  enum class Kind { Linear = 0, Radial = 1, Angular = 2 };
  Kind kind = Kind::Linear;
  /// In parts of the filled rectangle's sides.
  QPointF from, to;
  /// Of a radial one: the axis across `from`-`to` over the one along it. 0 is a circle.
  double ellipse = 0;
  /// Sorted by position.
  QList<GradientStop> stops;
};

/// How pictures are toned. 1 leaves contrast and saturation as they are; the hue is turned by
/// radians.
struct ColorControls {
  double brightness = 0, contrast = 1, saturation = 1, hue = 0;
};

/// What an area or an outline is painted with.
struct Paint {
  enum class Kind { Color = 0, Gradient = 1, Pattern = 4, Noise = 5 };
  enum class Pattern { Tile = 0, Fill = 1, Stretch = 2, Fit = 3 };
  /// What the grains of noise are.
  enum class Noise { Gray = 0, Black = 1, White = 2, Colored = 3 };
  Kind kind = Kind::Color;
  QColor color;
  Gradient gradient;
  Pattern pattern = Pattern::Fill;
  double tileScale = 1;
  /// The reference to the picture of a pattern; owned by the layer's JSON. Never null.
  const nlohmann::ordered_json* image;
  QList<ColorControls> tones = {};
  Noise noise = Noise::Gray;
  double noiseIntensity = 0;
  BlendMode blendMode = BlendMode::Normal;
  double opacity = 1;
};

struct Border {
  enum class Position { Center = 0, Inside = 1, Outside = 2 };
  Paint paint;
  Position position = Position::Center;
  double thickness = 1;
};

struct Shadow {
  QColor color;
  QPointF offset;
  /// Twice the Gaussian's standard deviation.
  double blurRadius = 0;
  double spread = 0;
  BlendMode blendMode = BlendMode::Normal;
};

struct Blur {
  enum class Kind { Gaussian = 0, Motion = 1, Zoom = 2, Background = 3 };
  Kind kind = Kind::Gaussian;
  double radius = 0;
  /// Of what is seen through a background blur, 1 leaves it as it is.
  double saturation = 1;
  /// Degrees, counter-clockwise, of a motion blur.
  double angle = 0;
  /// Of a zoom blur, in parts of the layer's sides.
  QPointF center;
};

/// What stands at the end of an open line.
enum class Marker {
  None = 0,
  OpenArrow = 1,
  FilledArrow = 2,
  Line = 3,
  OpenCircle = 4,
  FilledCircle = 5,
  OpenSquare = 6,
  FilledSquare = 7
};

struct LayerStyle {
  QList<Paint> fills;
  QList<Border> borders;
  QList<Shadow> shadows, innerShadows;
  QList<double> dashes;
  Qt::PenCapStyle cap = Qt::FlatCap;
  Qt::PenJoinStyle join = Qt::SvgMiterJoin;
  double miterLimit = 10;
  Marker startMarker = Marker::None, endMarker = Marker::None;
  QList<Blur> blurs;
  QList<ColorControls> colorControls;
  bool evenOdd = true;
  BlendMode blendMode = BlendMode::Normal;
  double opacity = 1;
};

/// `style` may be null JSON: nothing is painted then.
LayerStyle readLayerStyle(const nlohmann::ordered_json& style);

/// Opaque black for what is no colour.
QColor readColor(const nlohmann::ordered_json& color);

}  // namespace kelvar::render
