#include "sketch/document/LayerStyle.h"

#include <algorithm>

namespace kelvar {

ImageReference readImageReference(const SketchJson& image) {
  ImageReference reference{.name = getString(image, "_ref")};
  const SketchJson& data = get(image, "data");
  if (data.is_object()) reference.data = getString(data, "_data");
  return reference;
}

}  // namespace kelvar

namespace kelvar::render {
namespace {

/// `Normal` for unknown numbers.
BlendMode blendModeFrom(int number) {
  const bool isKnown = number > 0 && number <= int(BlendMode::PlusLighter);
  return isKnown ? BlendMode(number) : BlendMode::Normal;
}

/// The value of an enumeration whose numbers run from 0 to `last`.
template <class Enum>
Enum choice(const SketchJson& object, const char* key, Enum otherwise, Enum last) {
  const int number = getInt(object, key, int(otherwise));
  return number >= 0 && number <= int(last) ? Enum(number) : otherwise;
}

Gradient readGradient(const SketchJson& json) {
  Gradient gradient{
      .kind = choice(json, "gradientType", Gradient::Kind::Linear, Gradient::Kind::Angular),
      .from = getPoint(json, "from"),
      .to = getPoint(json, "to"),
      .ellipse = getNumber(json, "elipseLength"),
      .stops = {}};
  for (const SketchJson& stop : getArray(json, "stops")) {
    gradient.stops.append(
        {std::clamp(getNumber(stop, "position"), 0.0, 1.0), readColor(get(stop, "color"))});
  }
  std::stable_sort(gradient.stops.begin(), gradient.stops.end(),
                   [](const auto& a, const auto& b) { return a.position < b.position; });
  return gradient;
}

Paint readPaint(const SketchJson& json) {
  const SketchJson& context = get(json, "contextSettings");
  const int kind = getInt(json, "fillType");
  return {.kind = kind == 1 || kind == 4 || kind == 5 ? Paint::Kind(kind) : Paint::Kind::Color,
          .color = readColor(get(json, "color")),
          .gradient = readGradient(get(json, "gradient")),
          .pattern = choice(json, "patternFillType", Paint::Pattern::Fill, Paint::Pattern::Fit),
          .tileScale = getNumber(json, "patternTileScale", 1),
          .image = readImageReference(get(json, "image")),
          .noise = choice(json, "noiseIndex", Paint::Noise::Gray, Paint::Noise::Colored),
          .noiseIntensity = std::clamp(getNumber(json, "noiseIntensity"), 0.0, 1.0),
          .blendMode = blendModeFrom(getInt(context, "blendMode")),
          .opacity = std::clamp(getNumber(context, "opacity", 1), 0.0, 1.0)};
}

/// Units. A shadow that is farther away is out of sight, and one that is spread wider takes minutes
/// to draw.
constexpr double kMaxCoordinate = 1e6, kMaxSpread = 2000;
/// One after the other; Sketch offers one of each kind.
constexpr qsizetype kMaxBlurs = 8;
/// A thinner border cannot be seen, and its dashes would take forever.
constexpr double kThinnestBorder = 1e-4;

double lengthIn(const SketchJson& json, const char* key, double most = kMaxCoordinate) {
  return std::clamp(getNumber(json, key), -most, most);
}

Shadow readShadow(const SketchJson& json) {
  const SketchJson& context = get(json, "contextSettings");
  QColor color = readColor(get(json, "color"));
  color.setAlphaF(color.alphaF() * float(std::clamp(getNumber(context, "opacity", 1), 0.0, 1.0)));
  return {.color = color,
          .offset = {lengthIn(json, "offsetX"), lengthIn(json, "offsetY")},
          .blurRadius = std::max(0.0, lengthIn(json, "blurRadius")),
          .spread = lengthIn(json, "spread", kMaxSpread),
          .blendMode = blendModeFrom(getInt(context, "blendMode"))};
}

/// Later kinds, such as glass, change what is seen through the layer and leave the layer sharp.
Blur readBlur(const SketchJson& json) {
  return {.kind = Blur::Kind(std::clamp(getInt(json, "type"), 0, int(Blur::Kind::Background))),
          .radius = std::max(0.0, getNumber(json, "radius")),
          .saturation = getNumber(json, "saturation", 1),
          .angle = getNumber(json, "motionAngle"),
          .center = getPoint(json, "center")};
}

void readBorderOptions(const SketchJson& options, LayerStyle* style) {
  constexpr Qt::PenCapStyle kCaps[] = {Qt::FlatCap, Qt::RoundCap, Qt::SquareCap};
  constexpr Qt::PenJoinStyle kJoins[] = {Qt::SvgMiterJoin, Qt::RoundJoin, Qt::BevelJoin};
  style->cap = kCaps[choice(options, "lineCapStyle", 0, 2)];
  style->join = kJoins[choice(options, "lineJoinStyle", 0, 2)];
  // Dashes count even where "isEnabled" is false.
  double sum = 0;
  for (const SketchJson& dash : getArray(options, "dashPattern")) {
    style->dashes.append(dash.is_number() ? std::max(0.0, dash.get<double>()) : 0);
    sum += style->dashes.last();
  }
  if (!(sum > 0)) style->dashes.clear();
}

/// Documents before Sketch 52 say "decoration" for "marker".
Marker readMarker(const SketchJson& style, const char* key, const char* oldKey) {
  return Marker(
      std::clamp(getInt(style, key, getInt(style, oldKey)), 0, int(Marker::FilledSquare)));
}

/// Calls `add` for each enabled part under `key`, which in some versions is one object.
template <class Add>
void eachEnabled(const SketchJson& style, const char* key, const Add& add) {
  const SketchJson& parts = get(style, key);
  const auto addEnabled = [&](const SketchJson& part) {
    if (part.is_object() && getBool(part, "isEnabled", true)) add(part);
  };
  if (parts.is_object()) addEnabled(parts);
  if (!parts.is_array()) return;
  for (const SketchJson& part : parts) addEnabled(part);
}

}  // namespace

QColor readColor(const SketchJson& color) {
  const auto part = [&](const char* key, double otherwise) {
    return float(std::clamp(getNumber(color, key, otherwise), 0.0, 1.0));
  };
  return QColor::fromRgbF(part("red", 0), part("green", 0), part("blue", 0), part("alpha", 1));
}

LayerStyle readLayerStyle(const SketchJson& json) {
  LayerStyle style;
  const SketchJson& context = get(json, "contextSettings");
  style.opacity = std::clamp(getNumber(context, "opacity", 1), 0.0, 1.0);
  style.blendMode = blendModeFrom(getInt(context, "blendMode"));
  style.evenOdd = getInt(json, "windingRule", 1) != 0;
  style.miterLimit = getNumber(json, "miterLimit", 10);
  style.startMarker = readMarker(json, "startMarkerType", "startDecorationType");
  style.endMarker = readMarker(json, "endMarkerType", "endDecorationType");
  readBorderOptions(get(json, "borderOptions"), &style);
  eachEnabled(json, "fills", [&](const auto& fill) { style.fills.append(readPaint(fill)); });
  eachEnabled(json, "borders", [&](const SketchJson& border) {
    const double thickness = getNumber(border, "thickness", 1);
    if (!(thickness > kThinnestBorder)) return;
    style.borders.append(
        {readPaint(border),
         choice(border, "position", Border::Position::Center, Border::Position::Outside),
         thickness});
  });
  // Later documents keep both kinds in one list.
  eachEnabled(json, "shadows", [&](const auto& part) {
    (getBool(part, "isInnerShadow") ? style.innerShadows : style.shadows).append(readShadow(part));
  });
  eachEnabled(json, "innerShadows",
              [&](const auto& part) { style.innerShadows.append(readShadow(part)); });
  for (const char* key : {"blur", "blurs"}) {
    eachEnabled(json, key, [&](const auto& blur) {
      if (style.blurs.size() < kMaxBlurs) style.blurs.append(readBlur(blur));
    });
  }
  eachEnabled(json, "colorControls", [&](const SketchJson& controls) {
    style.colorControls.append({getNumber(controls, "brightness"),
                                getNumber(controls, "contrast", 1),
                                getNumber(controls, "saturation", 1), getNumber(controls, "hue")});
  });
  for (Paint& fill : style.fills) fill.tones = style.colorControls;
  return style;
}

}  // namespace kelvar::render
