#pragma once

#include <QColor>
#include <QList>
#include <QPointF>

#include "pixels/composite/BlendMode.h"
#include "sketch/document/ImageReference.h"
#include "sketch/document/SketchJson.h"

namespace kelvar {

/// Reads the "image" of a fill or a bitmap.
ImageReference readImageReference(const SketchJson& image);

}  // namespace kelvar

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
  /// In fractions of the filled rectangle's sides.
  QPointF from, to;
  /// For a radial gradient: the ratio of the axis perpendicular to `from`-`to` to the axis along
  /// it. 0 means a circle.
  double ellipse = 0;
  /// Sorted by position.
  QList<GradientStop> stops;
};

/// Color adjustments of an image. A contrast or saturation of 1 changes nothing; `hue` is a
/// rotation in radians.
struct ColorControls {
  double brightness = 0, contrast = 1, saturation = 1, hue = 0;
};

/// The color, gradient, image or noise that fills an area or a border.
struct Paint {
  enum class Kind { Color = 0, Gradient = 1, Pattern = 4, Noise = 5 };
  enum class Pattern { Tile = 0, Fill = 1, Stretch = 2, Fit = 3 };
  /// The colors of the noise's grains.
  enum class Noise { Gray = 0, Black = 1, White = 2, Colored = 3 };
  Kind kind = Kind::Color;
  QColor color;
  Gradient gradient;
  Pattern pattern = Pattern::Fill;
  double tileScale = 1;
  /// For a pattern.
  ImageReference image = {};
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
  /// For a background blur: the factor for the saturation of the layers behind; 1 changes nothing.
  double saturation = 1;
  /// For a motion blur: its direction in degrees, counterclockwise.
  double angle = 0;
  /// For a zoom blur, in fractions of the layer's sides.
  QPointF center;
};

/// The marker at an end of an open line.
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

/// If `style` is null JSON, the style paints nothing.
LayerStyle readLayerStyle(const SketchJson& style);

/// Opaque black if `color` is not a color.
QColor readColor(const SketchJson& color);

}  // namespace kelvar::render
