#include "sketch/classes/AttributedText.h"

#include <QColor>
#include <algorithm>

#include "core/NSFont.h"
#include "runtime/Conversion.h"
#include "runtime/raise.h"
#include "sketch/classes/MSColor.h"
#include "sketch/classes/ModelPart.h"
#include "sketch/render/text/TextRuns.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;

QVariantMap paragraphOf(const render::ParagraphStyle& style) {
  return {{u"alignment"_s, int(style.alignment)},
          {u"lineSpacing"_s, style.lineSpacing},
          {u"paragraphSpacing"_s, style.spacing},
          {u"paragraphSpacingBefore"_s, style.spacingBefore},
          {u"minimumLineHeight"_s, style.minLineHeight},
          {u"maximumLineHeight"_s, style.maxLineHeight},
          {u"lineHeightMultiple"_s, style.lineHeightMultiple},
          {u"firstLineHeadIndent"_s, style.firstIndent},
          {u"headIndent"_s, style.indent},
          {u"tailIndent"_s, style.tail}};
}

SketchJson fontJson(const QVariant& value) {
  const auto font = std::dynamic_pointer_cast<NSFont>(value.value<ObjectRef>());
  if (!font) raise(u"the attribute NSFont takes an NSFont"_s);
  return {{"_class", "fontDescriptor"},
          {"attributes",
           {{"name", font->fontName().toStdString()},
            {"size", numberJson(font->pointSize(), "pointSize")}}}};
}

/// What is 0 is left out, as in the documents of the host.
SketchJson paragraphJson(const QVariant& value) {
  if (value.typeId() != QMetaType::QVariantMap) {
    raise(u"the attribute NSParagraphStyle takes an NSParagraphStyle"_s);
  }
  static const QVariantMap kKnown = paragraphOf({});
  SketchJson json{{"_class", "paragraphStyle"}};
  const QVariantMap style = value.toMap();
  for (auto each = style.begin(); each != style.end(); ++each) {
    const QByteArray key = each.key().toUtf8();
    if (!kKnown.contains(each.key()) && key != "lineBreakMode") {
      raise(u"a paragraph style has no %1"_s.arg(each.key()));
    }
    if (!isNumber(each.value())) raise(u"%1 of a paragraph style is a number"_s.arg(each.key()));
    const double number = each.value().toDouble();
    if (number != 0 || key == "alignment") {
      json[key.toStdString()] = numberJson(number, key.constData());
    }
  }
  return json;
}

/// The names of numbers, in scripts and in documents.
constexpr std::pair<const char*, const char*> kNumbers[] = {
    {"NSKern", "kerning"},
    {"NSUnderline", "underlineStyle"},
    {"NSStrikethrough", "strikethroughStyle"},
    {"NSBaselineOffset", "baselineOffset"},
    {"MSAttributedStringTextTransformAttribute", "MSAttributedStringTextTransformAttribute"}};

void assignOne(const QString& name, const QVariant& value, SketchJson* json) {
  constexpr auto kColor = "MSAttributedStringColorAttribute";
  if (name == u"NSFont") {
    (*json)["MSAttributedStringFontAttribute"] = fontJson(value);
    return;
  }
  if (name == u"NSColor" || name == QLatin1StringView(kColor)) {
    (*json)[kColor] = MSColor::jsonFrom(value, "the attribute NSColor");
    json->erase("NSColor");
    return;
  }
  if (name == u"NSParagraphStyle") {
    (*json)["paragraphStyle"] = paragraphJson(value);
    return;
  }
  for (const auto& [known, key] : kNumbers) {
    if (name != QLatin1StringView(known)) continue;
    if (!isNumber(value)) raise(u"the attribute %1 takes a number"_s.arg(name));
    (*json)[key] = numberJson(value.toDouble(), known);
    return;
  }
  raise(u"the texts of documents have no attribute %1"_s.arg(name));
}

}  // namespace

QVariantMap AttributedText::attributesOf(const render::CharacterStyle& style) {
  QVariantMap attributes{{u"NSFont"_s, toVariant(std::make_shared<NSFont>(style.font, style.size))},
                         {u"NSColor"_s, style.color},
                         {u"NSParagraphStyle"_s, paragraphOf(style.paragraph)}};
  const double numbers[] = {style.kerning, double(style.underline), double(style.strikethrough),
                            style.baselineOffset, double(int(style.letters))};
  for (size_t i = 0; i < std::size(numbers); ++i) {
    if (numbers[i] != 0) attributes.insert(QString::fromLatin1(kNumbers[i].first), numbers[i]);
  }
  return attributes;
}

void AttributedText::assign(const QVariantMap& attributes, SketchJson* json) {
  for (auto each = attributes.begin(); each != attributes.end(); ++each) {
    assignOne(each.key(), each.value(), json);
  }
}

AttributedText AttributedText::from(const QVariant& value) {
  if (value.typeId() == QMetaType::QString) return {value.toString(), {}};
  const QVariantMap parts = value.toMap();
  if (!parts.contains(u"runs"_s)) raise(u"an attributed string is expected"_s);
  return {parts[u"string"_s].toString(), parts[u"runs"_s].toList()};
}

SketchJson AttributedText::runJson(qsizetype location, qsizetype length, SketchJson attributes) {
  return {{"_class", "stringAttribute"},
          {"location", location},
          {"length", length},
          {"attributes", std::move(attributes)}};
}

SketchJson AttributedText::toJson(const SketchJson& leading) const {
  SketchJson list = SketchJson::array();
  qsizetype end = 0;
  const auto addUntil = [&](qsizetype to, const SketchJson& attributes) {
    if (to <= end) return;
    if (!list.empty() && list.back()["attributes"] == attributes) {
      list.back()["length"] = to - list.back()["location"].get<qsizetype>();
    } else {
      list.push_back(runJson(end, to - end, attributes));
    }
    end = to;
  };
  for (const QVariant& each : runs) {
    const QVariantMap run = each.toMap();
    const auto inText = [&](double at) {
      return std::clamp<qsizetype>(integerFromReal(at), 0, string.size());
    };
    const double start = run[u"location"_s].toDouble();
    SketchJson attributes = leading;
    assign(run[u"attributes"_s].toMap(), &attributes);
    addUntil(inText(start), leading);
    addUntil(inText(start + run[u"length"_s].toDouble()), attributes);
  }
  addUntil(string.size(), leading);
  SketchJson json{{"_class", "attributedString"}, {"string", string.toStdString()}};
  json["attributes"] = std::move(list);
  return json;
}

}  // namespace kelvar
