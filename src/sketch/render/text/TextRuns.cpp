#include "sketch/render/text/TextRuns.h"

#include <algorithm>

#include "sketch/document/KeyedArchive.h"
#include "sketch/document/LayerStyle.h"
#include "sketch/document/SketchJson.h"

namespace kelvar::render {
namespace {

using namespace Qt::StringLiterals;
using Alignment = ParagraphStyle::Alignment;

constexpr double kMaxTab = 1e5;

Alignment alignmentFrom(int number) {
  return number >= 0 && number <= int(Alignment::Natural) ? Alignment(number) : Alignment::Natural;
}

/// An archive in the JSON in place of a value; invalid if there is none.
QVariant archived(const SketchJson& value, const char* key = "_archive") {
  const QString archive = getString(value, key);
  return archive.isEmpty() ? QVariant()
                           : readKeyedArchive(QByteArray::fromBase64(archive.toLatin1()));
}

void setFont(const QVariantMap& font, CharacterStyle* style) {
  const QVariantMap attributes = font[u"NSFontDescriptorAttributes"_s].toMap();
  const QString name = attributes[u"NSFontNameAttribute"_s].toString();
  style->font = !name.isEmpty() ? name : font.value(u"NSName"_s, style->font).toString();
  const QVariant size = attributes.value(u"NSFontSizeAttribute"_s, font[u"NSSize"_s]);
  if (size.toDouble() > 0) style->size = size.toDouble();
}

void setParagraph(const QVariantMap& paragraph, CharacterStyle* style) {
  const auto length = [&](const QString& key) {
    return std::clamp(paragraph[key].toDouble(), -kMaxTab, kMaxTab);
  };
  style->paragraph = {.alignment = alignmentFrom(paragraph.value(u"NSAlignment"_s, 4).toInt()),
                      .minLineHeight = length(u"NSMinLineHeight"_s),
                      .maxLineHeight = length(u"NSMaxLineHeight"_s),
                      .lineHeightMultiple = length(u"NSLineHeightMultiple"_s),
                      .lineSpacing = length(u"NSLineSpacing"_s),
                      .spacing = length(u"NSParagraphSpacing"_s),
                      .spacingBefore = length(u"NSParagraphSpacingBefore"_s),
                      .firstIndent = length(u"NSFirstLineHeadIndent"_s),
                      .indent = length(u"NSHeadIndent"_s),
                      .tail = length(u"NSTailIndent"_s),
                      .tabs = {}};
  for (const QVariant& tab : paragraph[u"NSTabStops"_s].toList()) {
    style->paragraph.tabs.append(std::clamp(tab.toMap()[u"NSLocation"_s].toDouble(), 0.0, kMaxTab));
  }
}

/// The components of a color are text, "0.5 0.5 0.5 1", with a trailing zero byte.
QColor archivedColor(const QVariantMap& color) {
  if (color.contains(u"red"_s)) {
    const auto part = [&](const QString& key) {
      return std::clamp(color.value(key, 1).toFloat(), 0.f, 1.f);
    };
    return QColor::fromRgbF(part(u"red"_s), part(u"green"_s), part(u"blue"_s), part(u"alpha"_s));
  }
  const bool isGray = color.contains(u"NSWhite"_s);
  QByteArray text = color[isGray ? u"NSWhite"_s : u"NSRGB"_s].toByteArray();
  text.replace('\0', "");
  QList<float> parts;
  for (const QByteArray& part : text.split(' ')) {
    parts.append(std::clamp(part.toFloat(), 0.f, 1.f));
  }
  if (isGray) parts.insert(1, 2, parts[0]);
  if (parts.size() < 3) return Qt::black;
  return QColor::fromRgbF(parts[0], parts[1], parts[2], parts.value(3, 1));
}

CharacterStyle archivedStyle(const QVariantMap& attributes) {
  CharacterStyle style;
  setFont(attributes.value(u"MSAttributedStringFontAttribute"_s, attributes[u"NSFont"_s]).toMap(),
          &style);
  for (const auto& key : {u"NSColor"_s, u"MSAttributedStringColorAttribute"_s,
                          u"MSAttributedStringColorDictionaryAttribute"_s}) {
    if (attributes.contains(key)) style.color = archivedColor(attributes[key].toMap());
  }
  setParagraph(attributes[u"NSParagraphStyle"_s].toMap(), &style);
  style.kerning = attributes[u"NSKern"_s].toDouble();
  style.baselineOffset = attributes[u"NSBaselineOffset"_s].toDouble();
  style.ligatures = attributes.value(u"NSLigature"_s, 1).toInt() != 0;
  style.underline = attributes[u"NSUnderline"_s].toInt() != 0;
  style.strikethrough = attributes[u"NSStrikethrough"_s].toInt() != 0;
  const int letters = attributes[u"MSAttributedStringTextTransformAttribute"_s].toInt();
  if (letters == 1 || letters == 2) style.letters = CharacterStyle::Case(letters);
  return style;
}

/// Axes are keyed by their tags as numbers.
void setVariations(const SketchJson& variations, CharacterStyle* style) {
  if (!variations.is_object()) return;
  constexpr auto kWeight = "2003265652";  // "wght"
  style->weight = std::clamp(getInt(variations, kWeight), 0, 1000);
  style->hasVariations = variations.size() > size_t(variations.contains(kWeight));
}

/// The next variable-length number: seven bits per byte, the lowest first; the top bit means that
/// more follow.
qsizetype nextNumber(const QByteArray& bytes, qsizetype* at) {
  qsizetype number = 0;
  for (int shift = 0; *at < bytes.size() && shift < 32; shift += 7) {
    const auto byte = uint8_t(bytes[(*at)++]);
    number |= qsizetype(byte & 0x7f) << shift;
    if (byte < 0x80) break;
  }
  return number;
}

/// "NSAttributes" are those of all characters, or a list from which "NSAttributeInfo" picks, with
/// pairs of a length and an index.
TextRuns archivedRuns(const QVariantMap& string) {
  TextRuns runs{string[u"NSString"_s].toString(), {}};
  const QVariant attributes = string[u"NSAttributes"_s];
  if (attributes.typeId() != QMetaType::QVariantList) {
    runs.runs.append({0, runs.text.size(), archivedStyle(attributes.toMap())});
    return runs;
  }
  const QVariantList choices = attributes.toList();
  const QByteArray info = string[u"NSAttributeInfo"_s].toByteArray();
  qsizetype start = 0;
  for (qsizetype at = 0; at < info.size() && start < runs.text.size();) {
    const qsizetype length = nextNumber(info, &at), index = nextNumber(info, &at);
    runs.runs.append({start, length, archivedStyle(choices.value(index).toMap())});
    start += length;
  }
  return runs;
}

/// Sorts the runs, trims those that overlap or exceed the text, and fills the gaps.
void cover(TextRuns* runs, const CharacterStyle& fallback) {
  std::stable_sort(runs->runs.begin(), runs->runs.end(),
                   [](const TextRun& a, const TextRun& b) { return a.start < b.start; });
  QList<TextRun> covering;
  qsizetype at = 0;
  for (TextRun run : runs->runs) {
    const qsizetype end = std::min(run.start + run.length, runs->text.size());
    if (run.start > at) {
      const qsizetype gapEnd = std::min(run.start, runs->text.size());
      covering.append({at, gapEnd - at, fallback});
      at = gapEnd;
    }
    if (end <= at) continue;
    run.start = at;
    run.length = end - at;
    covering.append(run);
    at = end;
  }
  if (at < runs->text.size()) covering.append({at, runs->text.size() - at, fallback});
  if (covering.isEmpty()) {
    covering.append({0, 0, runs->runs.isEmpty() ? fallback : runs->runs[0].style});
  }
  runs->runs = covering;
}

}  // namespace

CharacterStyle readCharacterStyle(const SketchJson& attributes) {
  CharacterStyle style;
  const SketchJson& font = get(attributes, "MSAttributedStringFontAttribute");
  const SketchJson& fontAttributes = get(font, "attributes");
  setFont(archived(font).toMap(), &style);
  if (const QString name = getString(fontAttributes, "name"); !name.isEmpty()) style.font = name;
  if (const double size = getNumber(fontAttributes, "size"); size > 0) style.size = size;

  setVariations(get(fontAttributes, "variation"), &style);

  // Sketch 47 to 50 wrote a dictionary.
  const SketchJson& dictionary = get(attributes, "MSAttributedStringColorDictionaryAttribute");
  const SketchJson& color =
      dictionary.is_object() ? dictionary : get(attributes, "MSAttributedStringColorAttribute");
  const SketchJson& oldColor = get(attributes, "NSColor");
  if (color.is_object()) {
    style.color = readColor(color);
  } else if (const QVariant archive = archived(oldColor); archive.isValid()) {
    style.color = archivedColor(archive.toMap());
  }

  const SketchJson& paragraph = get(attributes, "paragraphStyle");
  const SketchJson& oldParagraph = get(attributes, "NSParagraphStyle");
  const QVariant archive = archived(paragraph.contains("_archive") ? paragraph : oldParagraph);
  if (archive.isValid()) {
    setParagraph(archive.toMap(), &style);
  } else {
    style.paragraph = {.alignment = alignmentFrom(getInt(paragraph, "alignment", 4)),
                       .minLineHeight = getNumber(paragraph, "minimumLineHeight"),
                       .maxLineHeight = getNumber(paragraph, "maximumLineHeight"),
                       .spacing = getNumber(paragraph, "paragraphSpacing"),
                       .tabs = {}};
  }
  style.kerning = getNumber(attributes, "kerning", getNumber(attributes, "NSKern"));
  style.baselineOffset = getNumber(attributes, "baselineOffset");
  style.ligatures = getInt(attributes, "ligature", getInt(attributes, "NSLigature", 1)) != 0;
  style.underline = getInt(attributes, "underlineStyle", getInt(attributes, "NSUnderline")) != 0;
  style.strikethrough =
      getInt(attributes, "strikethroughStyle", getInt(attributes, "NSStrikethrough")) != 0;
  const int letters = getInt(attributes, "MSAttributedStringTextTransformAttribute");
  if (letters == 1 || letters == 2) style.letters = CharacterStyle::Case(letters);
  return style;
}

TextRuns readTextRuns(const SketchJson& layer) {
  const SketchJson& string = get(layer, "attributedString");
  const SketchJson& textStyle = get(get(layer, "style"), "textStyle");
  const CharacterStyle fallback = readCharacterStyle(get(textStyle, "encodedAttributes"));
  TextRuns runs;
  if (const SketchJson& archive = get(string, "archivedAttributedString"); archive.is_object()) {
    runs = archivedRuns(archived(archive).toMap());
  } else {
    runs.text = getString(string, "string");
    for (const SketchJson& run : getArray(string, "attributes")) {
      runs.runs.append({std::max(0, getInt(run, "location")), std::max(0, getInt(run, "length")),
                        readCharacterStyle(get(run, "attributes"))});
    }
  }
  cover(&runs, fallback);
  return runs;
}

}  // namespace kelvar::render
