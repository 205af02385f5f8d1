#include "host/render/LayerStyle.h"

#include <algorithm>

#include "host/SketchJson.h"

namespace kelvar::render {
namespace {

/// The value of an enumeration whose numbers run from 0 to `last`.
template <class Enum>
Enum choice(const SketchJson& object, const char* key, Enum otherwise, Enum last) {
  const int number = integerIn(object, key, int(otherwise));
  return number >= 0 && number <= int(last) ? Enum(number) : otherwise;
}

Gradient readGradient(const SketchJson& json) {
  Gradient gradient{
      .kind = choice(json, "gradientType", Gradient::Kind::Linear, Gradient::Kind::Angular),
      .from = pointIn(json, "from"),
      .to = pointIn(json, "to"),
      .ellipse = numberIn(json, "elipseLength"),
      .stops = {}};
  for (const SketchJson& stop : listIn(json, "stops")) {
    gradient.stops.append(
        {std::clamp(numberIn(stop, "position"), 0.0, 1.0), readColor(memberOf(stop, "color"))});
  }
  std::stable_sort(gradient.stops.begin(), gradient.stops.end(),
                   [](const auto& a, const auto& b) { return a.position < b.position; });
  return gradient;
}

Paint readPaint(const SketchJson& json) {
  const SketchJson& context = memberOf(json, "contextSettings");
  const int kind = integerIn(json, "fillType");
  return {.kind = kind == 1 || kind == 4 || kind == 5 ? Paint::Kind(kind) : Paint::Kind::Color,
          .color = readColor(memberOf(json, "color")),
          .gradient = readGradient(memberOf(json, "gradient")),
          .pattern = choice(json, "patternFillType", Paint::Pattern::Fill, Paint::Pattern::Fit),
          .tileScale = numberIn(json, "patternTileScale", 1),
          .image = &memberOf(json, "image"),
          .noise = choice(json, "noiseIndex", Paint::Noise::Gray, Paint::Noise::Colored),
          .noiseIntensity = std::clamp(numberIn(json, "noiseIntensity"), 0.0, 1.0),
          .blendMode = blendModeFrom(integerIn(context, "blendMode")),
          .opacity = std::clamp(numberIn(context, "opacity", 1), 0.0, 1.0)};
}

/// Units. A shadow that is farther away is in nobody's sight, and one that is spread wider takes
/// minutes to draw.
constexpr double kFarthest = 1e6, kWidestSpread = 2000;
/// One after the other; the host offers one of each kind.
constexpr qsizetype kMostBlurs = 8;
/// No thinner border can be seen, and the dashes of one take for ever.
constexpr double kThinnestBorder = 1e-4;

double lengthIn(const SketchJson& json, const char* key, double most = kFarthest) {
  return std::clamp(numberIn(json, key), -most, most);
}

Shadow readShadow(const SketchJson& json) {
  const SketchJson& context = memberOf(json, "contextSettings");
  QColor color = readColor(memberOf(json, "color"));
  color.setAlphaF(color.alphaF() * float(std::clamp(numberIn(context, "opacity", 1), 0.0, 1.0)));
  return {.color = color,
          .offset = {lengthIn(json, "offsetX"), lengthIn(json, "offsetY")},
          .blurRadius = std::max(0.0, lengthIn(json, "blurRadius")),
          .spread = lengthIn(json, "spread", kWidestSpread),
          .blendMode = blendModeFrom(integerIn(context, "blendMode"))};
}

/// Later kinds, such as glass, change what is seen through the layer and leave the layer sharp.
Blur readBlur(const SketchJson& json) {
  return {.kind = Blur::Kind(std::clamp(integerIn(json, "type"), 0, int(Blur::Kind::Background))),
          .radius = std::max(0.0, numberIn(json, "radius")),
          .saturation = numberIn(json, "saturation", 1),
          .angle = numberIn(json, "motionAngle"),
          .center = pointIn(json, "center")};
}

void readBorderOptions(const SketchJson& options, LayerStyle* style) {
  constexpr Qt::PenCapStyle kCaps[] = {Qt::FlatCap, Qt::RoundCap, Qt::SquareCap};
  constexpr Qt::PenJoinStyle kJoins[] = {Qt::SvgMiterJoin, Qt::RoundJoin, Qt::BevelJoin};
  style->cap = kCaps[choice(options, "lineCapStyle", 0, 2)];
  style->join = kJoins[choice(options, "lineJoinStyle", 0, 2)];
  if (!flagIn(options, "isEnabled", true)) return;
  double sum = 0;
  for (const SketchJson& dash : listIn(options, "dashPattern")) {
    style->dashes.append(dash.is_number() ? std::max(0.0, dash.get<double>()) : 0);
    sum += style->dashes.last();
  }
  if (!(sum > 0)) style->dashes.clear();
}

/// Documents before Sketch 52 say "decoration" for "marker".
Marker readMarker(const SketchJson& style, const char* key, const char* oldKey) {
  return Marker(
      std::clamp(integerIn(style, key, integerIn(style, oldKey)), 0, int(Marker::FilledSquare)));
}

/// Calls `add` for each enabled part under `key`, which in some versions is one object.
template <class Add>
void eachEnabled(const SketchJson& style, const char* key, const Add& add) {
  const SketchJson& parts = memberOf(style, key);
  const auto addEnabled = [&](const SketchJson& part) {
    if (part.is_object() && flagIn(part, "isEnabled", true)) add(part);
  };
  if (parts.is_object()) addEnabled(parts);
  if (!parts.is_array()) return;
  for (const SketchJson& part : parts) addEnabled(part);
}

}  // namespace

QColor readColor(const SketchJson& color) {
  const auto part = [&](const char* key, double otherwise) {
    return float(std::clamp(numberIn(color, key, otherwise), 0.0, 1.0));
  };
  return QColor::fromRgbF(part("red", 0), part("green", 0), part("blue", 0), part("alpha", 1));
}

LayerStyle readLayerStyle(const SketchJson& json) {
  LayerStyle style;
  const SketchJson& context = memberOf(json, "contextSettings");
  style.opacity = std::clamp(numberIn(context, "opacity", 1), 0.0, 1.0);
  style.blendMode = blendModeFrom(integerIn(context, "blendMode"));
  style.evenOdd = integerIn(json, "windingRule", 1) != 0;
  style.miterLimit = numberIn(json, "miterLimit", 10);
  style.startMarker = readMarker(json, "startMarkerType", "startDecorationType");
  style.endMarker = readMarker(json, "endMarkerType", "endDecorationType");
  readBorderOptions(memberOf(json, "borderOptions"), &style);
  eachEnabled(json, "fills", [&](const auto& fill) { style.fills.append(readPaint(fill)); });
  eachEnabled(json, "borders", [&](const SketchJson& border) {
    const double thickness = numberIn(border, "thickness", 1);
    if (!(thickness > kThinnestBorder)) return;
    style.borders.append(
        {readPaint(border),
         choice(border, "position", Border::Position::Center, Border::Position::Outside),
         thickness});
  });
  // Later documents keep both kinds in one list.
  eachEnabled(json, "shadows", [&](const auto& part) {
    (flagIn(part, "isInnerShadow") ? style.innerShadows : style.shadows).append(readShadow(part));
  });
  eachEnabled(json, "innerShadows",
              [&](const auto& part) { style.innerShadows.append(readShadow(part)); });
  for (const char* key : {"blur", "blurs"}) {
    eachEnabled(json, key, [&](const auto& blur) {
      if (style.blurs.size() < kMostBlurs) style.blurs.append(readBlur(blur));
    });
  }
  eachEnabled(json, "colorControls", [&](const SketchJson& controls) {
    style.colorControls.append({numberIn(controls, "brightness"), numberIn(controls, "contrast", 1),
                                numberIn(controls, "saturation", 1), numberIn(controls, "hue")});
  });
  for (Paint& fill : style.fills) fill.tones = style.colorControls;
  return style;
}

}  // namespace kelvar::render
