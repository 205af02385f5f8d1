#include "host/render/TextRuns.h"

#include <algorithm>

#include "host/SketchJson.h"
#include "host/render/KeyedArchive.h"
#include "host/render/LayerStyle.h"

namespace kelvar::render {
namespace {

using namespace Qt::StringLiterals;
using Alignment = ParagraphStyle::Alignment;

constexpr double kFarthestTab = 1e5;

Alignment alignmentFrom(int number) {
  return number >= 0 && number <= int(Alignment::Natural) ? Alignment(number) : Alignment::Natural;
}

/// An archive that stands in the JSON in place of a value; invalid when there is none.
QVariant archived(const SketchJson& value, const char* key = "_archive") {
  const QString archive = textIn(value, key);
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
    return std::clamp(paragraph[key].toDouble(), -kFarthestTab, kFarthestTab);
  };
  style->paragraph = {.alignment = alignmentFrom(paragraph.value(u"NSAlignment"_s, 4).toInt()),
                      .leastLineHeight = length(u"NSMinLineHeight"_s),
                      .mostLineHeight = length(u"NSMaxLineHeight"_s),
                      .lineHeightMultiple = length(u"NSLineHeightMultiple"_s),
                      .lineSpacing = length(u"NSLineSpacing"_s),
                      .spacing = length(u"NSParagraphSpacing"_s),
                      .spacingBefore = length(u"NSParagraphSpacingBefore"_s),
                      .firstIndent = length(u"NSFirstLineHeadIndent"_s),
                      .indent = length(u"NSHeadIndent"_s),
                      .tail = length(u"NSTailIndent"_s),
                      .tabs = {}};
  for (const QVariant& tab : paragraph[u"NSTabStops"_s].toList()) {
    style->paragraph.tabs.append(
        std::clamp(tab.toMap()[u"NSLocation"_s].toDouble(), 0.0, kFarthestTab));
  }
}

/// Parts of a colour stand as text, "0.5 0.5 0.5 1", and end with a zero.
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

/// Axes by the numbers that their tags are.
void setVariations(const SketchJson& variations, CharacterStyle* style) {
  if (!variations.is_object()) return;
  constexpr auto kWeight = "2003265652";  // "wght"
  style->weight = std::clamp(integerIn(variations, kWeight), 0, 1000);
  style->hasVariations = variations.size() > size_t(variations.contains(kWeight));
}

/// The next number of seven bits a byte, the lowest first; the top bit says that more follow.
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

/// Sorts the runs, cuts what overlaps or reaches out, and fills the gaps.
void cover(TextRuns* runs, const CharacterStyle& otherwise) {
  std::stable_sort(runs->runs.begin(), runs->runs.end(),
                   [](const TextRun& a, const TextRun& b) { return a.start < b.start; });
  QList<TextRun> covering;
  qsizetype at = 0;
  for (TextRun run : runs->runs) {
    const qsizetype end = std::min(run.start + run.length, runs->text.size());
    if (run.start > at) {
      const qsizetype gapEnd = std::min(run.start, runs->text.size());
      covering.append({at, gapEnd - at, otherwise});
      at = gapEnd;
    }
    if (end <= at) continue;
    run.start = at;
    run.length = end - at;
    covering.append(run);
    at = end;
  }
  if (at < runs->text.size()) covering.append({at, runs->text.size() - at, otherwise});
  if (covering.isEmpty()) {
    covering.append({0, 0, runs->runs.isEmpty() ? otherwise : runs->runs[0].style});
  }
  runs->runs = covering;
}

}  // namespace

CharacterStyle readCharacterStyle(const SketchJson& attributes) {
  CharacterStyle style;
  const SketchJson& font = memberOf(attributes, "MSAttributedStringFontAttribute");
  const SketchJson& fontAttributes = memberOf(font, "attributes");
  setFont(archived(font).toMap(), &style);
  if (const QString name = textIn(fontAttributes, "name"); !name.isEmpty()) style.font = name;
  if (const double size = numberIn(fontAttributes, "size"); size > 0) style.size = size;

  setVariations(memberOf(fontAttributes, "variation"), &style);

  const SketchJson& color = memberOf(attributes, "MSAttributedStringColorAttribute");
  const SketchJson& oldColor = memberOf(attributes, "NSColor");
  if (color.is_object()) {
    style.color = readColor(color);
  } else if (const QVariant archive = archived(oldColor); archive.isValid()) {
    style.color = archivedColor(archive.toMap());
  }

  const SketchJson& paragraph = memberOf(attributes, "paragraphStyle");
  const SketchJson& oldParagraph = memberOf(attributes, "NSParagraphStyle");
  const QVariant archive = archived(paragraph.contains("_archive") ? paragraph : oldParagraph);
  if (archive.isValid()) {
    setParagraph(archive.toMap(), &style);
  } else {
    style.paragraph = {.alignment = alignmentFrom(integerIn(paragraph, "alignment", 4)),
                       .leastLineHeight = numberIn(paragraph, "minimumLineHeight"),
                       .mostLineHeight = numberIn(paragraph, "maximumLineHeight"),
                       .spacing = numberIn(paragraph, "paragraphSpacing"),
                       .tabs = {}};
  }
  style.kerning = numberIn(attributes, "kerning", numberIn(attributes, "NSKern"));
  style.baselineOffset = numberIn(attributes, "baselineOffset");
  style.ligatures = integerIn(attributes, "ligature", integerIn(attributes, "NSLigature", 1)) != 0;
  style.underline =
      integerIn(attributes, "underlineStyle", integerIn(attributes, "NSUnderline")) != 0;
  style.strikethrough =
      integerIn(attributes, "strikethroughStyle", integerIn(attributes, "NSStrikethrough")) != 0;
  const int letters = integerIn(attributes, "MSAttributedStringTextTransformAttribute");
  if (letters == 1 || letters == 2) style.letters = CharacterStyle::Case(letters);
  return style;
}

TextRuns readTextRuns(const SketchJson& layer) {
  const SketchJson& string = memberOf(layer, "attributedString");
  const SketchJson& textStyle = memberOf(memberOf(layer, "style"), "textStyle");
  const CharacterStyle otherwise = readCharacterStyle(memberOf(textStyle, "encodedAttributes"));
  TextRuns runs;
  if (const SketchJson& archive = memberOf(string, "archivedAttributedString");
      archive.is_object()) {
    runs = archivedRuns(archived(archive).toMap());
  } else {
    runs.text = textIn(string, "string");
    for (const SketchJson& run : listIn(string, "attributes")) {
      runs.runs.append({std::max(0, integerIn(run, "location")),
                        std::max(0, integerIn(run, "length")),
                        readCharacterStyle(memberOf(run, "attributes"))});
    }
  }
  cover(&runs, otherwise);
  return runs;
}

}  // namespace kelvar::render
