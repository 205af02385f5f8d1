#include "scripting/Boxed.h"

#include <QColor>
#include <QImage>
#include <algorithm>

#include "runtime/ClassInfo.h"
#include "scripting/NSBezierPath.h"
#include "scripting/NSImage.h"
#include "scripting/NSURL.h"
#include "scripting/NSURLRequest.h"

namespace kelvar {
namespace {

/// A value that scripts only pass on.
template <class T>
class Handle : public Boxed {
 public:
  explicit Handle(const QVariant& value) : value_(value) {}
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }
  QVariant value() const override { return value_; }

 private:
  const QVariant value_;
};

template <float (QColor::*part)() const>
double component(const Handle<QColor>& self) {
  return double((self.value().value<QColor>().*part)());
}

QColor gray(float white, float alpha) { return QColor::fromRgbF(white, white, white, alpha); }

template <Qt::GlobalColor color>
QColor named() {
  return color == Qt::gray ? QColor::fromRgbF(0.5f, 0.5f, 0.5f) : QColor(color);
}

QVariant same(const Handle<QColor>& self, const QVariant&) { return self.value(); }

QColor orange() { return QColor::fromRgbF(1, 0.5f, 0); }
QColor purple() { return QColor::fromRgbF(0.5f, 0, 0.5f); }
QColor brown() { return QColor::fromRgbF(0.6f, 0.4f, 0.2f); }
QColor lightGray() { return gray(2 / 3.0f, 1); }
QColor darkGray() { return gray(1 / 3.0f, 1); }

template <>
const ClassInfo& Handle<QImage>::staticClassInfo() {
  static const ClassInfo kClass = ClassInfoBuilder<Handle>("CGImage");
  return kClass;
}
template <>
const ClassInfo& Handle<QColor>::staticClassInfo() {
  static const ClassInfo kClass =
      ClassInfoBuilder<Handle>("NSColor")
          .classOperation("colorWithRed:green:blue:alpha:", &QColor::fromRgbF,
                          "Creates a color from components between 0 and 1.")
          .classOperation("colorWithCalibratedRed:green:blue:alpha:", &QColor::fromRgbF,
                          "Creates a color from components between 0 and 1.")
          .classOperation("colorWithDeviceRed:green:blue:alpha:", &QColor::fromRgbF,
                          "Creates a color from components between 0 and 1.")
          .classOperation("colorWithSRGBRed:green:blue:alpha:", &QColor::fromRgbF,
                          "Creates a color from components between 0 and 1.")
          .classOperation("colorWithWhite:alpha:", gray,
                          "Creates a gray from components between 0 and 1.")
          .classOperation("colorWithCalibratedWhite:alpha:", gray,
                          "Creates a gray from components between 0 and 1.")
          .classOperation("colorWithHue:saturation:brightness:alpha:", &QColor::fromHsvF,
                          "Creates a color from components between 0 and 1.")
          .classOperation("colorWithCalibratedHue:saturation:brightness:alpha:", &QColor::fromHsvF,
                          "Creates a color from components between 0 and 1.")
          .classOperation("colorWithDeviceWhite:alpha:", gray,
                          "Creates a gray from components between 0 and 1.")
          .classOperation("orangeColor", orange, "Orange.")
          .classOperation("purpleColor", purple, "Purple.")
          .classOperation("brownColor", brown, "Brown.")
          .classOperation("lightGrayColor", lightGray, "Light gray.")
          .classOperation("darkGrayColor", darkGray, "Dark gray.")
          .classOperation("clearColor", named<Qt::transparent>, "Transparent black.")
          .classOperation("blackColor", named<Qt::black>, "Black.")
          .classOperation("whiteColor", named<Qt::white>, "White.")
          .classOperation("grayColor", named<Qt::gray>, "Gray.")
          .classOperation("redColor", named<Qt::red>, "Red.")
          .classOperation("greenColor", named<Qt::green>, "Green.")
          .classOperation("blueColor", named<Qt::blue>, "Blue.")
          .classOperation("cyanColor", named<Qt::cyan>, "Cyan.")
          .classOperation("magentaColor", named<Qt::magenta>, "Magenta.")
          .classOperation("yellowColor", named<Qt::yellow>, "Yellow.")
          .operation("colorUsingColorSpaceName:", same,
                     "Returns the color itself, as there is one color space.")
          .operation("colorUsingColorSpace:", same,
                     "Returns the color itself, as there is one color space.")
          .operation(
              "colorWithAlphaComponent:",
              [](const Handle<QColor>& self, float alpha) {
                QColor color = self.value().value<QColor>();
                color.setAlphaF(std::clamp(alpha, 0.0f, 1.0f));
                return color;
              },
              "Returns the color with another opacity.")
          .property("hueComponent", component<&QColor::hueF>, "Hue, between 0 and 1.")
          .property("saturationComponent", component<&QColor::saturationF>,
                    "Saturation, between 0 and 1.")
          .property("brightnessComponent", component<&QColor::valueF>,
                    "Brightness, between 0 and 1.")
          .property("redComponent", component<&QColor::redF>, "Red, between 0 and 1.")
          .property("greenComponent", component<&QColor::greenF>, "Green, between 0 and 1.")
          .property("blueComponent", component<&QColor::blueF>, "Blue, between 0 and 1.")
          .property("alphaComponent", component<&QColor::alphaF>, "Opacity, between 0 and 1.");
  return kClass;
}

template <class Class>
std::shared_ptr<Boxed> make(const QVariant& value) {
  return std::make_shared<Class>(value);
}

size_t imageIdentity(const QVariant& value) { return qHash(value.value<ImageRef>().get()); }
size_t urlIdentity(const QVariant& value) { return qHash(value.toUrl()); }
size_t colorIdentity(const QVariant& value) {
  return qHash(quint64(value.value<QColor>().rgba64()));
}

struct Row {
  QMetaType type;
  const ClassInfo& (*staticClassInfo)();
  std::shared_ptr<Boxed> (*box)(const QVariant& value);
  /// Null where equal values are different objects.
  size_t (*identity)(const QVariant& value) = nullptr;
};

const Row* rowFor(QMetaType type) {
  static const Row kRows[] = {
      {QMetaType::fromType<ImageRef>(), &NSImage::staticClassInfo, make<NSImage>, imageIdentity},
      {QMetaType::fromType<QUrl>(), &NSURL::staticClassInfo, make<NSURL>, urlIdentity},
      {QMetaType::fromType<URLRequest>(), &NSURLRequest::staticClassInfo, make<NSURLRequest>},
      {QMetaType::fromType<BezierPath>(), &NSBezierPath::staticClassInfo, make<NSBezierPath>},
      {QMetaType::fromType<QImage>(), &Handle<QImage>::staticClassInfo, make<Handle<QImage>>},
      {QMetaType::fromType<QColor>(), &Handle<QColor>::staticClassInfo, make<Handle<QColor>>,
       colorIdentity}};
  for (const Row& row : kRows) {
    if (row.type == type) return &row;
  }
  return nullptr;
}

}  // namespace

std::shared_ptr<Boxed> Boxed::box(const QVariant& value) {
  const Row* const row = rowFor(value.metaType());
  return row ? row->box(value) : nullptr;
}

std::optional<size_t> Boxed::identityOf(const QVariant& value) {
  const Row* const row = rowFor(value.metaType());
  return row && row->identity ? std::optional(row->identity(value)) : std::nullopt;
}

const ClassInfo* Boxed::classFor(QMetaType type) {
  const Row* const row = rowFor(type);
  return row ? &row->staticClassInfo() : nullptr;
}

}  // namespace kelvar
