#include "sketch/classes/TextAttributes.h"

#include "core/NSFont.h"
#include "runtime/Conversion.h"
#include "runtime/raise.h"
#include "sketch/classes/AttributedText.h"
#include "sketch/classes/LayerClasses.h"
#include "sketch/classes/MSColor.h"
#include "sketch/classes/ModelPart.h"
#include "sketch/classes/TextContent.h"
#include "sketch/document/Layer.h"
#include "sketch/render/text/TextRuns.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;
using Self = SketchLayer;

const ClassInfo::Registration kRegistered(&textStyleClass);

render::TextRuns runsOf(const Self& self) { return render::readTextRuns(self.node().json()); }

NSFontRef font(const Self& self) {
  const render::CharacterStyle style = runsOf(self).runs.first().style;
  return std::make_shared<NSFont>(style.font, style.size);
}
void setFont(Self& self, const NSFontRef& font) {
  if (!font) raise(u"setFont: takes an NSFont, not nil"_s);
  TextContent text(self);
  text.setFont("name", font->fontName().toStdString());
  text.setFont("size", numberJson(font->pointSize(), "pointSize"));
  text.fitFrame();
}

QVariantList fonts(const Self& self) {
  QVariantList fonts;
  QStringList known;
  for (const render::TextRun& run : runsOf(self).runs) {
    const QString key = u"%1 %2"_s.arg(run.style.font).arg(run.style.size);
    if (known.contains(key)) continue;
    known.append(key);
    fonts.append(toVariant(std::make_shared<NSFont>(run.style.font, run.style.size)));
  }
  return fonts;
}

QVariant attributedString(const Self& self) {
  const render::TextRuns runs = runsOf(self);
  AttributedText text{runs.text, {}};
  for (const render::TextRun& run : runs.runs) {
    if (run.length == 0) continue;
    text.runs.append(QVariantMap{{u"location"_s, run.start},
                                 {u"length"_s, run.length},
                                 {u"attributes"_s, AttributedText::attributesOf(run.style)}});
  }
  return QVariant::fromValue(text);
}

void setAttributedString(Self& self, const QVariant& value) {
  TextContent text(self);
  text.setText(AttributedText::from(value));
  text.typeLikeFirst();
  text.fitFrame();
}

void addAttributes(Self& self, const QVariantMap& attributes, const QVariantMap& range) {
  const qsizetype length = TextContent(self).string().size();
  const qsizetype from = integerFromReal(range.value(u"location"_s).toDouble());
  const qsizetype count = integerFromReal(range.value(u"length"_s).toDouble());
  if (from < 0 || count < 0 || count > length - from) {
    raise(u"the range {%1, %2} is beyond the %3 characters of the text"_s.arg(from).arg(count).arg(
        length));
  }
  TextContent text(self);
  text.changeRange(from, count,
                   [&](SketchJson& json) { AttributedText::assign(attributes, &json); });
  text.fitFrame();
}

void addAttribute(Self& self, const QString& name, const QVariant& value) {
  TextContent text(self);
  text.changeAttributes([&](SketchJson& json) { AttributedText::assign({{name, value}}, &json); });
  text.fitFrame();
}

QVariantMap leadingAttributes(const Self& self) {
  return AttributedText::attributesOf(runsOf(self).runs.first().style);
}

QVariantMap attributesOfStyle(const ModelPart& self) {
  return AttributedText::attributesOf(
      render::readCharacterStyle(get(self.json(), "encodedAttributes")));
}

}  // namespace

ClassInfoBuilder<Self> withAttributes(ClassInfoBuilder<Self> builder) {
  return std::move(builder)
      .property("font", font, setFont, "The font, of the first character.")
      .property("fonts", fonts, "The different fonts of the characters.")
      .property("attributedStringValue", attributedString, setAttributedString,
                "The characters with their attributes, as an NSAttributedString.")
      .property("attributedString", attributedString, setAttributedString,
                "The characters with their attributes, as an NSAttributedString.")
      .operation(
          "isEditingText", [](const Self&) { return false; },
          "Returns false, as there is no canvas to edit the text on.")
      .operation("styleAttributes", leadingAttributes,
                 "Returns the attributes of the first character.")
      .operation("addAttribute:value:", addAttribute,
                 "Sets an attribute of all characters, such as NSColor.")
      .operation(
          "addAttribute:value:forRange:",
          [](Self& self, const QString& name, const QVariant& value, const QVariantMap& range) {
            addAttributes(self, {{name, value}}, range);
          },
          "Sets an attribute of some characters, such as NSColor.")
      .operation("addAttributes:forRange:", addAttributes,
                 "Sets attributes of some characters, by names such as NSColor.")
      .operation(
          "changeTextColorTo:",
          [](Self& self, const QVariant& color) { addAttribute(self, u"NSColor"_s, color); },
          "Sets the color of all characters.");
}

const ClassInfo& textStyleClass() {
  static const ClassInfo kClass =
      ClassInfoBuilder<ModelPart>("MSTextStyle", ModelPart::staticClassInfo())
          .property("attributes", attributesOfStyle,
                    "How texts of the style look, by names such as NSFont.")
          .property("encodedAttributes", attributesOfStyle,
                    "How texts of the style look, by names such as NSFont.")
          .property("verticalAlignment", Member<ModelPart>::whole<"verticalAlignment">,
                    Member<ModelPart>::setWhole<"verticalAlignment">,
                    "Where the lines are in the frame: at its top (0), middle (1) or bottom (2).");
  return kClass;
}

}  // namespace kelvar
