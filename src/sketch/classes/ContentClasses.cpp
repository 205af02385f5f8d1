#include "runtime/raise.h"
#include "sketch/classes/LayerClasses.h"
#include "sketch/classes/MSColor.h"
#include "sketch/classes/MSImageData.h"
#include "sketch/classes/StyleClasses.h"
#include "sketch/classes/TextAttributes.h"
#include "sketch/classes/TextContent.h"
#include "sketch/classes/newLayerJson.h"

namespace kelvar {
namespace {

using Self = SketchLayer;
using M = Member<SketchLayer>;

const ClassInfo::Registration kRegistered[] = {
    ClassInfo::Registration(&textLayerClass), ClassInfo::Registration(&bitmapLayerClass),
    ClassInfo::Registration(&exportOptionsClass), ClassInfo::Registration(&exportFormatClass)};

/// Reads the content of a text, which a layer that is read only does not change.
TextContent textOf(const Self& self) { return TextContent(*refTo(self)); }

/// A getter and a setter of the content, by its member functions.
template <auto get>
auto text(const Self& self) {
  return (textOf(self).*get)();
}

/// Changes what the size of a text depends on.
void changeText(Self& self, const std::function<void(TextContent&)>& change) {
  TextContent content(self);
  change(content);
  content.fitFrame();
}

void setString(Self& self, const QString& string) {
  changeText(self, [&](TextContent& text) { text.setString(string); });
}
void setFontSize(Self& self, double size) {
  if (!(size > 0)) raise(QStringLiteral("fontSize must be above 0"));
  changeText(self, [&](TextContent& text) { text.setFont("size", numberJson(size, "fontSize")); });
}
void setFontName(Self& self, const QString& name) {
  if (name.isEmpty()) raise(QStringLiteral("fontPostscriptName takes the name of a font"));
  changeText(self, [&](TextContent& text) { text.setFont("name", name.toStdString()); });
}
void setLineHeight(Self& self, double height) {
  changeText(self, [&](TextContent& text) {
    text.setInParagraph({"minimumLineHeight", "maximumLineHeight"},
                        numberJson(height, "lineHeight"));
  });
}
void setAlignment(Self& self, int alignment) {
  textOf(self).setInParagraph({"alignment"}, alignment);
}
void setSpacing(Self& self, double spacing) {
  const SketchJson json = numberJson(spacing, "characterSpacing");
  changeText(self, [&](TextContent& text) {
    text.changeAttributes([&](SketchJson& attributes) { attributes["kerning"] = json; });
  });
}
void setTransform(Self& self, int transform) {
  changeText(self, [&](TextContent& text) {
    text.changeAttributes([&](SketchJson& attributes) {
      attributes["MSAttributedStringTextTransformAttribute"] = transform;
    });
  });
}

void storeColor(Self& self, const SketchJson& color) {
  textOf(self).changeAttributes([&](SketchJson& attributes) {
    attributes["MSAttributedStringColorAttribute"] = color;
    attributes.erase("NSColor");
  });
}
MSColorRef textColor(const Self& self) {
  const SketchLayerRef layer = refTo(self);
  return std::make_shared<MSColor>(textOf(self).color(), MSColor::Kind::Mutable,
                                   [layer](const SketchJson& color) { storeColor(*layer, color); });
}
void setTextColor(Self& self, const QVariant& color) {
  storeColor(self, MSColor::jsonFrom(color, "setTextColor:"));
}

/// A text's frame fits what is in it from the start.
template <class Make>
SketchLayerRef fitted(const Make& make) {
  SketchLayerRef layer = make();
  TextContent(*layer).fitFrame();
  return layer;
}
SketchLayerRef newText() { return fitted(newLayer<"text">); }
SketchLayerRef newTextWithFrame(const QRectF& frame) {
  return fitted([&] { return newLayerWithFrame<"text">(frame); });
}

MSImageDataRef image(const Self& self) {
  return MSImageData::of(get(self.node().json(), "image"), self.document());
}
void setImage(Self& self, const MSImageDataRef& image) {
  if (!image) raise(QStringLiteral("setImage: takes an MSImageData, not nil"));
  self.edit().change()["image"] = image->storeIn(self.document());
}

SketchLayerRef bitmapWithImage(const QRectF& frame, const MSImageDataRef& image) {
  const SketchLayerRef layer = newLayerOfKind("bitmap", frame);
  setImage(*layer, image);
  return layer;
}

SketchLayerRef bitmapOf(const QRectF& frame, const ImageRef& image) {
  const MSImageDataRef data = MSImageData::fromImage(image);
  return data ? bitmapWithImage(frame, data) : nullptr;
}

QVariantList formats(const ModelPart& self) {
  return partsIn(self, "exportFormats", exportFormatClass());
}

void setFormats(ModelPart& self, const QVariantList& formats) {
  SketchJson copies = SketchJson::array();
  for (const QVariant& format : formats) {
    const auto given = std::dynamic_pointer_cast<ModelPart>(format.value<ObjectRef>());
    copies.push_back(partOfClass(given, exportFormatClass(), "setExportFormats:").json());
  }
  self.change()["exportFormats"] = std::move(copies);
}

SketchJson newFormat() {
  return {{"_class", "exportFormat"}, {"absoluteSize", 0}, {"fileFormat", "png"},  {"name", ""},
          {"namingScheme", 0},        {"scale", 1},        {"visibleScaleType", 0}};
}

ModelPartRef formatOf(double scale, const QString& name, const QString& fileFormat) {
  if (!(scale > 0)) raise(QStringLiteral("the scale of a format must be above 0"));
  SketchJson json = newFormat();
  json["scale"] = numberJson(scale, "scale");
  json["name"] = name.toStdString();
  json["fileFormat"] = fileFormat.toStdString();
  return std::make_shared<ModelPart>(exportFormatClass(), std::move(json));
}

ClassInfoBuilder<Self> withFont(ClassInfoBuilder<Self> builder) {
  return std::move(builder)
      .property("stringValue", text<&TextContent::string>, setString,
                "The characters. When they are set, all look like the first one before, and the "
                "frame is fitted to them as textBehaviour says.")
      .operation(
          "isEmpty", [](Self& self) { return TextContent(self).string().isEmpty(); },
          "Returns whether there are no characters.")
      .property("fontSize", text<&TextContent::fontSize>, setFontSize,
                "The size of the font, of the first character.")
      .property("fontPostscriptName", text<&TextContent::fontName>, setFontName,
                "The name of the font, of the first character.")
      .property("textColor", textColor, setTextColor, "The color, of the first character.")
      .property("lineHeight", text<&TextContent::lineHeight>, setLineHeight,
                "The height of lines; 0 leaves it to the font.")
      .property("characterSpacing", text<&TextContent::characterSpacing>, setSpacing,
                "What is added after each character.")
      .property("kerning", text<&TextContent::characterSpacing>, setSpacing,
                "What is added after each character, like characterSpacing.")
      .property("textAlignment", text<&TextContent::alignment>, setAlignment,
                "How lines are aligned: left (0), right (1), center (2), justified (3) or by the "
                "language (4).")
      .property("textTransform", text<&TextContent::textTransform>, setTransform,
                "The case that is shown: as typed (0), upper (1) or lower (2).");
}

}  // namespace

const ClassInfo& textLayerClass() {
  static const ClassInfo kClass =
      withAttributes(
          withFont(ClassInfoBuilder<Self>("MSTextLayer", styledLayerClass())
                       .initializer("init", newText, "Creates a text, \"Text\".")
                       .initializer("initWithFrame:", newTextWithFrame,
                                    "Creates a text, \"Text\", whose frame begins there.")))
          .operation(
              "adjustFrameToFit", [](Self& self) { TextContent(self).fitFrame(); },
              "Fits the frame to the text as textBehaviour says, which also happens when the "
              "text or its font changes.")
          .property("textBehaviour", M::whole<"textBehaviour">, M::setWhole<"textBehaviour">,
                    "What the host fits to the text: width and height (0), the height (1) or "
                    "nothing (2).")
          .property(
              "verticalAlignment",
              [](const Self& self) {
                return getInt(get(get(self.node().json(), "style"), "textStyle"),
                              "verticalAlignment");
              },
              [](Self& self, int alignment) { textOf(self).setVerticalAlignment(alignment); },
              "Where the lines are in the frame: at its top (0), middle (1) or bottom (2).");
  return kClass;
}

const ClassInfo& bitmapLayerClass() {
  static const ClassInfo kClass =
      ClassInfoBuilder<Self>("MSBitmapLayer", styledLayerClass())
          .initializer("init", newLayer<"bitmap">, "Creates a bitmap without an image.")
          .initializer("initWithFrame:image:", bitmapWithImage, "Creates a bitmap of image data.")
          .classOperation(
              "bitmapWithImage:frame:",
              [](const ImageRef& image, const QRectF& frame) { return bitmapOf(frame, image); },
              "Creates a bitmap of an image; nil if it has no pixels.")
          .operation("image", image, "Returns the image; nil for none.")
          .operation("setImage:", setImage, "Replaces the image.")
          .operation(
              "NSImage",
              [](const Self& self) -> ImageRef {
                const MSImageDataRef data = image(self);
                return data ? data->image() : nullptr;
              },
              "Returns the image as an NSImage; nil for none.")
          .property("fillReplacesImage", M::flag<"fillReplacesImage">,
                    M::setFlag<"fillReplacesImage">, "Whether the fills are seen instead.");
  return kClass;
}

const ClassInfo& exportOptionsClass() {
  static const ClassInfo kClass =
      ClassInfoBuilder<ModelPart>("MSExportOptions", ModelPart::staticClassInfo())
          .property("exportFormats", formats, setFormats, "The formats.")
          .operation(
              "addExportFormat",
              [](ModelPart& self) {
                return appendPart(self, "exportFormats", exportFormatClass(), newFormat());
              },
              "Adds a PNG in its natural size and returns it.")
          .operation(
              "removeExportFormatAtIndex:",
              [](ModelPart& self, int index) { removePart(self, "exportFormats", index); },
              "Removes a format by its index.")
          .operation(
              "removeAllExportFormats",
              [](ModelPart& self) { self.change()["exportFormats"] = SketchJson::array(); },
              "Removes all formats.")
          .property("shouldTrim", Member<ModelPart>::flag<"shouldTrim">,
                    Member<ModelPart>::setFlag<"shouldTrim">,
                    "Whether the host cuts off what is transparent.");
  return kClass;
}

const ClassInfo& exportFormatClass() {
  using P = Member<ModelPart>;
  static const ClassInfo kClass =
      ClassInfoBuilder<ModelPart>("MSExportFormat", ModelPart::staticClassInfo())
          .initializer(
              "init", [] { return std::make_shared<ModelPart>(exportFormatClass(), newFormat()); },
              "Creates a PNG in its natural size.")
          .classOperation("formatWithScale:name:fileFormat:", formatOf,
                          "Creates a format from the pixels per unit, what is added to the name "
                          "of the file, and the extension.")
          .property("fileFormat", P::text<"fileFormat">, P::setText<"fileFormat">,
                    "The extension, such as \"png\".")
          .property("scale", P::number<"scale", std::ratio<1>>, P::setNumber<"scale">,
                    "Pixels per unit.")
          .property("name", P::text<"name">, P::setText<"name">,
                    "What is added to the name of the file.")
          .property("suffix", P::text<"name">, P::setText<"name">,
                    "What is added to the name of the file, like name.")
          .property("namingScheme", P::whole<"namingScheme">, P::setWhole<"namingScheme">,
                    "Where it is added: at the end (0) or at the beginning (1).");
  return kClass;
}

}  // namespace kelvar
