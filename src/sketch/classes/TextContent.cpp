#include "sketch/classes/TextContent.h"

#include <cmath>

#include "platform/image/OffscreenGuiApplication.h"
#include "sketch/classes/AttributedText.h"
#include "sketch/document/Layer.h"
#include "sketch/render/text/TextLayout.h"

namespace kelvar {
namespace {

constexpr const char* kFont = "MSAttributedStringFontAttribute";
constexpr const char* kColor = "MSAttributedStringColorAttribute";

SketchJson colorJson(const QColor& color) {
  return {{"_class", "color"},
          {"alpha", color.alphaF()},
          {"blue", color.blueF()},
          {"green", color.greenF()},
          {"red", color.redF()}};
}

SketchJson attributesOf(const render::CharacterStyle& style) {
  SketchJson paragraph{{"_class", "paragraphStyle"}, {"alignment", int(style.paragraph.alignment)}};
  const auto add = [&](const char* key, double value) {
    if (value != 0) paragraph[key] = value;
  };
  add("minimumLineHeight", style.paragraph.minLineHeight);
  add("maximumLineHeight", style.paragraph.maxLineHeight);
  add("paragraphSpacing", style.paragraph.spacing);
  SketchJson attributes{
      {kFont,
       {{"_class", "fontDescriptor"},
        {"attributes", {{"name", style.font.toStdString()}, {"size", style.size}}}}},
      {kColor, colorJson(style.color)},
      {"paragraphStyle", std::move(paragraph)}};
  if (style.kerning != 0) attributes["kerning"] = style.kerning;
  if (style.baselineOffset != 0) attributes["baselineOffset"] = style.baselineOffset;
  if (style.underline) attributes["underlineStyle"] = 1;
  if (style.strikethrough) attributes["strikethroughStyle"] = 1;
  if (style.letters != render::CharacterStyle::Case::AsTyped) {
    attributes["MSAttributedStringTextTransformAttribute"] = int(style.letters);
  }
  return attributes;
}

render::CharacterStyle leadingStyle(const SketchLayer& layer) {
  return render::readTextRuns(layer.node().json()).runs.first().style;
}

}  // namespace

QString TextContent::string() const { return render::readTextRuns(layer_.node().json()).text; }

SketchJson TextContent::leadingAttributes() const {
  const SketchJson& runs = getArray(get(layer_.node().json(), "attributedString"), "attributes");
  const SketchJson& attributes = runs.empty() ? runs : get(runs[0], "attributes");
  return attributes.is_object() ? attributes : attributesOf(leadingStyle(layer_));
}

void TextContent::setText(const AttributedText& given) {
  SketchJson content = given.toJson(leadingAttributes());
  layer_.edit().change()["attributedString"] = std::move(content);
}

void TextContent::setString(const QString& string) { setText({string, {}}); }

void TextContent::typeLikeFirst() {
  const SketchJson& runs = getArray(get(layer_.node().json(), "attributedString"), "attributes");
  if (runs.empty()) return;
  const SketchJson leading = get(runs[0], "attributes");
  changeTypingAttributes(leading, [&](SketchJson& attributes) { attributes = leading; });
}

QString TextContent::fontName() const { return leadingStyle(layer_).font; }
double TextContent::fontSize() const { return leadingStyle(layer_).size; }
double TextContent::lineHeight() const { return leadingStyle(layer_).paragraph.maxLineHeight; }
double TextContent::characterSpacing() const { return leadingStyle(layer_).kerning; }
int TextContent::alignment() const { return int(leadingStyle(layer_).paragraph.alignment); }
int TextContent::textTransform() const { return int(leadingStyle(layer_).letters); }

SketchJson TextContent::color() const {
  const SketchJson attributes = leadingAttributes();
  const SketchJson& color = get(attributes, kColor);
  return color.is_object() ? color : colorJson(leadingStyle(layer_).color);
}

void TextContent::unarchive() {
  const SketchJson& content = get(layer_.node().json(), "attributedString");
  if (get(content, "attributes").is_array()) return;
  const render::TextRuns runs = render::readTextRuns(layer_.node().json());
  SketchJson list = SketchJson::array();
  for (const render::TextRun& run : runs.runs) {
    if (run.length > 0)
      list.push_back(AttributedText::runJson(run.start, run.length, attributesOf(run.style)));
  }
  SketchJson& json = layer_.edit().change()["attributedString"];
  json = {{"_class", "attributedString"}, {"string", runs.text.toStdString()}};
  json["attributes"] = std::move(list);
}

void TextContent::changeAttributes(const Change& change) {
  const SketchJson leading = leadingAttributes();
  unarchive();
  SketchJson& json = layer_.edit().change();
  for (SketchJson& run : json["attributedString"]["attributes"]) {
    if (!run.is_object()) continue;
    if (!get(run, "attributes").is_object()) run["attributes"] = SketchJson::object();
    change(run["attributes"]);
  }
  changeTypingAttributes(leading, change);
}

void TextContent::changeTypingAttributes(const SketchJson& before, const Change& change) {
  SketchJson& style = layer_.edit().change()["style"];
  if (!style.is_object()) return;
  SketchJson& textStyle = style["textStyle"];
  if (!textStyle.is_object()) textStyle = {{"_class", "textStyle"}};
  if (!get(textStyle, "encodedAttributes").is_object()) {
    textStyle["encodedAttributes"] = before;
  }
  change(textStyle["encodedAttributes"]);
}

void TextContent::changeRange(qsizetype from, qsizetype count, const Change& change) {
  unarchive();
  const qsizetype to = from + count;
  const SketchJson runs = layer_.node().json()["attributedString"]["attributes"];
  SketchJson split = SketchJson::array();
  for (const SketchJson& run : runs) {
    const qsizetype start = std::max(0, getInt(run, "location"));
    const qsizetype end = start + std::max(0, getInt(run, "length"));
    const auto addPart = [&](qsizetype first, qsizetype last, bool isChanged) {
      if (first >= last) return;
      SketchJson attributes = get(run, "attributes");
      if (!attributes.is_object()) attributes = SketchJson::object();
      if (isChanged) change(attributes);
      split.push_back(AttributedText::runJson(first, last - first, std::move(attributes)));
    };
    const qsizetype inside = std::clamp(from, start, end), outside = std::clamp(to, start, end);
    addPart(start, inside, false);
    addPart(inside, outside, true);
    addPart(outside, end, false);
  }
  layer_.edit().change()["attributedString"]["attributes"] = std::move(split);
}

void TextContent::setFont(const char* attribute, const SketchJson& value) {
  const render::CharacterStyle before = leadingStyle(layer_);
  changeAttributes([&](SketchJson& attributes) {
    SketchJson& font = attributes[kFont];
    // Archived fonts are written again.
    if (!get(font, "attributes").is_object()) {
      font = {{"_class", "fontDescriptor"},
              {"attributes", {{"name", before.font.toStdString()}, {"size", before.size}}}};
    }
    font["attributes"][attribute] = value;
  });
}

void TextContent::fitFrame() {
  // How Sketch drew the letters before.
  if (layer_.node().json().contains("glyphBounds")) layer_.edit().change()["glyphBounds"] = "";
  render::TextBox box = render::readTextBox(layer_.node().json());
  const OffscreenGuiApplication fonts;
  if (box.behavior == render::TextBox::Behavior::Fixed || !fonts) return;
  box.fitsText = false;
  const render::TextRuns runs = render::readTextRuns(layer_.node().json());
  const QSizeF needed = render::layoutText(runs, box).size;
  QRectF frame = layer_.frameRect();
  if (!box.breaksLines()) {
    using Alignment = render::ParagraphStyle::Alignment;
    const Alignment alignment = runs.runs.first().style.paragraph.alignment;
    const double more = std::ceil(needed.width()) - frame.width();
    if (alignment == Alignment::Right) frame.moveLeft(frame.left() - more);
    if (alignment == Alignment::Center) frame.moveLeft(frame.left() - more / 2);
    frame.setWidth(frame.width() + more);
  }
  frame.setHeight(std::ceil(needed.height()));
  layer_.setFrame(KVRectFromCGRect(frame));
}

void TextContent::setInParagraph(std::initializer_list<const char*> keys, const SketchJson& value) {
  changeAttributes([&](SketchJson& attributes) {
    SketchJson& paragraph = attributes["paragraphStyle"];
    if (!paragraph.is_object() || paragraph.contains("_archive")) {
      paragraph = {{"_class", "paragraphStyle"}};
    }
    for (const char* key : keys) paragraph[key] = value;
  });
}

void TextContent::setVerticalAlignment(int alignment) {
  SketchJson& json = layer_.edit().change();
  if (!json["style"].is_object()) json["style"] = {{"_class", "style"}};
  // The style of the text is made if there is none.
  changeAttributes([](SketchJson&) {});
  layer_.edit().change()["style"]["textStyle"]["verticalAlignment"] = alignment;
}

}  // namespace kelvar
