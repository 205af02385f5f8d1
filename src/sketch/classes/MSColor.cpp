#include "sketch/classes/MSColor.h"

#include <QRegularExpression>
#include <cmath>

#include "runtime/ClassInfo.h"
#include "runtime/raise.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;
using Kind = MSColor::Kind;

const ClassInfo::Registration kRegistered(&MSColor::staticClassInfo);
const ClassInfo::Registration kImmutableRegistered(&MSColor::immutableClassInfo);

constexpr const char* kComponents[] = {"red", "green", "blue", "alpha"};

template <int index>
double componentAt(const MSColor& self) {
  return self.component(kComponents[index]);
}
template <int index>
void setComponentAt(MSColor& self, double value) {
  self.setComponent(kComponents[index], value);
}

template <Kind kind>
MSColorRef withComponents(double red, double green, double blue, double alpha) {
  return MSColor::fromComponents(red, green, blue, alpha, kind);
}

template <Kind kind>
MSColorRef withQColor(const QColor& color) {
  if (!color.isValid()) return nullptr;
  return withComponents<kind>(color.redF(), color.greenF(), color.blueF(), color.alphaF());
}

/// By bytes, so that a hex value comes back as it was written.
template <Kind kind>
MSColorRef withBytes(const QColor& color) {
  return withComponents<kind>(color.red() / 255.0, color.green() / 255.0, color.blue() / 255.0,
                              color.alphaF());
}

template <Kind kind>
MSColorRef withHex(const QString& hex, double alpha) {
  const QColor color(hex.startsWith(u'#') ? hex : u'#' + hex);
  if (!color.isValid()) return nullptr;
  MSColorRef made = withBytes<kind>(color);
  return withComponents<kind>(made->component("red"), made->component("green"),
                              made->component("blue"), alpha);
}

/// "#rgb", "#rrggbb", "rgb(…)", "rgba(…)" or a name; null for anything else.
template <Kind kind>
MSColorRef withSVGString(const QString& string) {
  static const QRegularExpression kFunction(
      uR"(^rgba?\(\s*(\d+)\s*,\s*(\d+)\s*,\s*(\d+)\s*(?:,\s*([0-9.]+)\s*)?\)$)"_s,
      QRegularExpression::CaseInsensitiveOption);
  const QString text = string.trimmed();
  const QRegularExpressionMatch found = kFunction.match(text);
  if (found.hasMatch()) {
    const auto part = [&](int i) { return std::min(found.captured(i).toInt(), 255) / 255.0; };
    const double alpha = found.captured(4).isEmpty() ? 1 : found.captured(4).toDouble();
    return withComponents<kind>(part(1), part(2), part(3), std::min(alpha, 1.0));
  }
  // Eight digits end with the opacity here, but begin with it for QColor.
  if (text.size() == 9 && text.startsWith(u'#')) {
    bool isHex = false;
    const uint alpha = text.last(2).toUInt(&isHex, 16);
    return isHex ? withHex<kind>(text.first(7), alpha / 255.0) : nullptr;
  }
  const QColor color(text);
  return color.isValid() ? withBytes<kind>(color) : nullptr;
}

template <Kind kind>
MSColorRef withDictionary(const QVariantMap& parts) {
  const auto part = [&](const char* name, double otherwise) {
    return parts.value(QString::fromLatin1(name), otherwise).toDouble();
  };
  return withComponents<kind>(part("r", 0), part("g", 0), part("b", 0), part("a", 1));
}

template <Kind kind>
MSColorRef withHue(double hue, double saturation, double brightness, double alpha) {
  const auto part = [](double value) { return float(std::clamp(value, 0.0, 1.0)); };
  return withQColor<kind>(
      QColor::fromHsvF(part(hue), part(saturation), part(brightness), part(alpha)));
}

QVariantMap dictionary(const MSColor& self) {
  QVariantMap parts;
  for (const char* name : kComponents) {
    parts.insert(QString(QLatin1Char(name[0])), self.component(name));
  }
  return parts;
}

template <Kind kind>
MSColorRef copyOf(const MSColor& self) {
  return std::make_shared<MSColor>(self.json(), kind);
}

bool isClose(const MSColor& self, const MSColorRef& other) {
  constexpr double kTolerance = 1.0 / 512;
  return other && std::all_of(std::begin(kComponents), std::end(kComponents), [&](auto* name) {
           return std::abs(self.component(name) - other->component(name)) < kTolerance;
         });
}

/// By components, whatever the kind. Scripts also pass what is not a color.
bool isEqual(const MSColor& self, const QVariant& value) {
  const auto other = std::dynamic_pointer_cast<MSColor>(value.value<ObjectRef>());
  return other && std::all_of(std::begin(kComponents), std::end(kComponents), [&](auto* name) {
           return self.component(name) == other->component(name);
         });
}

/// Equal colors have equal hashes.
double hash(const MSColor& self) { return self.toQColor().rgba(); }

/// What both kinds have.
template <Kind kind>
ClassInfoBuilder<MSColor> described(const char* name) {
  return ClassInfoBuilder<MSColor>(name)
      .initializer(
          "init", [] { return MSColor::fromComponents(0, 0, 0, 1, kind); }, "Creates black.")
      .classOperation("colorWithRed:green:blue:alpha:", withComponents<kind>,
                      "Creates a color from components between 0 and 1.")
      .classOperation("rgbColorRed:green:blue:alpha:", withComponents<kind>,
                      "Creates a color from components between 0 and 1.")
      .classOperation("colorWithRGBADictionary:", withDictionary<kind>,
                      "Creates a color from the components r, g, b and a, between 0 and 1.")
      .classOperation("colorWithHue:saturation:brightness:alpha:", withHue<kind>,
                      "Creates a color from components between 0 and 1.")
      .classOperation("colorWithNSColor:", withQColor<kind>, "Creates a color like the other.")
      .classOperation("colorWithHex:alpha:", withHex<kind>,
                      "Creates a color from digits such as \"FF8800\"; nil if they are not valid.")
      .classOperation("colorWithSVGString:", withSVGString<kind>,
                      "Creates a color from text such as \"#f80\", \"rgba(255,136,0,0.5)\" or "
                      "\"orange\"; nil if it is not valid.")
      .classOperation(
          "whiteColor", [] { return withComponents<kind>(1, 1, 1, 1); }, "Returns white.")
      .classOperation(
          "blackColor", [] { return withComponents<kind>(0, 0, 0, 1); }, "Returns black.")
      .operation("hexValue", &MSColor::hexValue, "Returns the digits, such as \"FF8800\".")
      .operation(
          "stringValueWithAlpha:",
          [](const MSColor& self, bool withAlpha) {
            return withAlpha ? self.svgRepresentation() : u'#' + self.hexValue();
          },
          "Returns \"#FF8800\", or with alpha \"rgba(255,136,0,0.50)\" if it is not opaque.")
      .operation("svgRepresentation", &MSColor::svgRepresentation,
                 "Returns the color as SVG writes it: \"#FF8800\", or \"rgba(255,136,0,0.50)\" if "
                 "it is not opaque.")
      .operation(
          "NSColorWithColorSpace:",
          [](const MSColor& self, const QVariant&) { return self.toQColor(); },
          "Returns the same components as an NSColor; there is one color space.")
      .operation("RGBADictionary", dictionary, "Returns the components as r, g, b and a.")
      .operation("isEqual:", isEqual,
                 "Returns whether the other is a color of the same components.")
      .operation("hash", hash, "Returns a number that is the same for equal colors.")
      .operation("fuzzyIsEqual:", isClose, "Returns whether the two colors look the same.")
      .operation("newMutableCounterpart", copyOf<Kind::Mutable>, "Returns a copy to be changed.")
      .operation("immutableModelObject", copyOf<Kind::Immutable>,
                 "Returns a copy that cannot be changed.");
}

}  // namespace

const ClassInfo& MSColor::staticClassInfo() {
  static const ClassInfo kClass =
      described<Kind::Mutable>("MSColor")
          .property("red", componentAt<0>, setComponentAt<0>, "Red, between 0 and 1.")
          .property("green", componentAt<1>, setComponentAt<1>, "Green, between 0 and 1.")
          .property("blue", componentAt<2>, setComponentAt<2>, "Blue, between 0 and 1.")
          .property("alpha", componentAt<3>, setComponentAt<3>, "Opacity, between 0 and 1.");
  return kClass;
}

const ClassInfo& MSColor::immutableClassInfo() {
  static const ClassInfo kClass =
      described<Kind::Immutable>("MSImmutableColor")
          .property("red", componentAt<0>, "Red, between 0 and 1.")
          .property("green", componentAt<1>, "Green, between 0 and 1.")
          .property("blue", componentAt<2>, "Blue, between 0 and 1.")
          .property("alpha", componentAt<3>, "Opacity, between 0 and 1.");
  return kClass;
}

MSColor::MSColor(SketchJson json, Kind kind, Store store)
    : json_(std::move(json)), kind_(kind), store_(std::move(store)) {
  if (!json_.is_object()) {
    json_ = {{"_class", "color"}, {"alpha", 1}, {"blue", 0}, {"green", 0}, {"red", 0}};
  }
}

MSColorRef MSColor::fromComponents(double red, double green, double blue, double alpha, Kind kind) {
  auto color = std::make_shared<MSColor>(SketchJson(), kind);
  const double values[] = {red, green, blue, alpha};
  for (size_t i = 0; i < std::size(values); ++i) color->setComponent(kComponents[i], values[i]);
  return color;
}

SketchJson MSColor::jsonFrom(const QVariant& color, const char* what) {
  if (const auto given = std::dynamic_pointer_cast<MSColor>(color.value<ObjectRef>())) {
    return given->json();
  }
  if (color.typeId() == QMetaType::QColor) {
    return withQColor<Kind::Mutable>(color.value<QColor>())->json();
  }
  raise(QStringLiteral("%1 takes an MSColor").arg(QString::fromLatin1(what)));
}

double MSColor::component(const char* name) const {
  return getNumber(json_, name, name == kComponents[3] ? 1 : 0);
}

void MSColor::setComponent(const char* name, double value) {
  if (!std::isfinite(value)) raise(u"%1 must be a finite number"_s.arg(QLatin1StringView(name)));
  json_[name] = std::clamp(value, 0.0, 1.0);
  if (store_) store_(json_);
}

QColor MSColor::toQColor() const {
  const auto part = [&](const char* name) { return float(component(name)); };
  return QColor::fromRgbF(part("red"), part("green"), part("blue"), part("alpha"));
}

QString MSColor::hexValue() const { return toQColor().name().mid(1).toUpper(); }

QString MSColor::svgRepresentation() const {
  const QColor color = toQColor();
  const double alpha = component("alpha");
  if (alpha >= 1) return u'#' + hexValue();
  return u"rgba(%1,%2,%3,%4)"_s.arg(color.red())
      .arg(color.green())
      .arg(color.blue())
      .arg(alpha, 0, 'f', 2);
}

QString MSColor::description() const {
  return u"<%1 r:%2 g:%3 b:%4 a:%5>"_s.arg(classInfo().name())
      .arg(component("red"), 0, 'f', 6)
      .arg(component("green"), 0, 'f', 6)
      .arg(component("blue"), 0, 'f', 6)
      .arg(component("alpha"), 0, 'f', 6);
}

}  // namespace kelvar
