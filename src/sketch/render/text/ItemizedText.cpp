#include "sketch/render/text/ItemizedText.h"

#include <QSet>
#include <QtEndian>
#include <cmath>

#include "sketch/render/text/FontMatcher.h"
#include "sketch/render/text/emojiLength.h"

namespace kelvar::render {
namespace {

constexpr double kMaxSize = 4000;

const QString kEmojiFont = QStringLiteral("AppleColorEmoji");

/// Of the font's tables: for a font of images, Qt says the size of these.
double unitsPerEmOf(const QRawFont& font) {
  const QByteArray head = font.fontTable("head");
  return head.size() < 20 ? font.unitsPerEm() : qFromBigEndian<quint16>(head.constData() + 18);
}

/// Read from one table, as Qt's own numbers come now from one of a font's tables, now from another.
LineMetrics metricsOf(const QRawFont& font, double size, bool asOnWindows) {
  const QByteArray table = font.fontTable(asOnWindows ? "OS/2" : "hhea");
  const qsizetype start = asOnWindows ? 74 : 4;
  const double unitsPerEm = unitsPerEmOf(font);
  double ascent = font.ascent() / kLayoutScale, descent = font.descent() / kLayoutScale;
  double leading = 0;
  if (table.size() >= start + 6 && unitsPerEm > 0) {
    const auto at = [&](qsizetype i) {
      return qFromBigEndian<qint16>(table.constData() + start + 2 * i) * size / unitsPerEm;
    };
    ascent = at(0);
    descent = asOnWindows ? at(1) : -at(1);
    leading = asOnWindows ? 0 : at(2);
  }
  return {std::round(ascent), std::round(descent), std::max(0.0, std::round(leading))};
}

LineMetrics metricsOf(const FontMetrics& known, double size) {
  return {std::round(known.ascent * size), std::round(known.descent * size),
          std::round(known.leading * size)};
}

/// Maps the glyphs of the item's font to those of `family`, for the characters of `text`. Ligatures
/// stay as they are.
void setOutlines(const QString& family, const QString& text, TextItem* item) {
  QFont font = item->font;
  font.setFamily(family);
  item->outlines = QRawFont::fromFont(font);
  const QRawFont laidOut = QRawFont::fromFont(item->font);
  const QSet<QChar> characters(text.begin(), text.end());
  for (const QChar c : characters) {
    const quint32 from = laidOut.glyphIndexesForString(c).value(0);
    const quint32 to = item->outlines.glyphIndexesForString(c).value(0);
    if (from != 0 && to != 0) item->glyphMap.insert(from, to);
  }
}

QString withCase(const QString& text, CharacterStyle::Case letters) {
  if (letters == CharacterStyle::Case::AsTyped) return text;
  const QString changed = letters == CharacterStyle::Case::Upper ? text.toUpper() : text.toLower();
  // Runs count characters: one that becomes two ("ß") is left alone.
  if (changed.size() == text.size()) return changed;
  QString kept;
  for (const QChar c : text) {
    const QString one =
        letters == CharacterStyle::Case::Upper ? QString(c).toUpper() : QString(c).toLower();
    kept += one.size() == 1 ? one : QString(c);
  }
  return kept;
}

TextItem itemOf(const TextRun& run, const FontMatch& match, bool asOnWindows) {
  const double size = std::clamp(run.style.size, 1 / kLayoutScale, kMaxSize);
  TextItem item{run.start, run.length, run.style, match.font, {}};
  if (run.style.weight > 0) item.font.setWeight(QFont::Weight(run.style.weight));
  item.font.setPixelSize(std::max(1, int(std::lround(size * kLayoutScale))));
  const QRawFont raw = QRawFont::fromFont(item.font);
  item.metrics =
      match.metrics.areKnown() ? metricsOf(match.metrics, size) : metricsOf(raw, size, asOnWindows);
  item.underlinePosition = raw.underlinePosition() / kLayoutScale;
  item.lineThickness = std::max(raw.lineThickness() / kLayoutScale, size / 20);
  item.xHeight = raw.xHeight() / kLayoutScale;
  item.strokeOffset = match.strokeOffset * size;
  return item;
}

/// Appends the item, in pieces where it has emoji: these are always set in the emoji font, as other
/// fonts may have them without colors. The pieces keep the heights of the item's lines.
void appendPieces(const TextItem& item, QStringView characters, QList<TextItem>* items) {
  const QString emojiFamily = matchFont(kEmojiFont).font.family();
  const auto append = [&](qsizetype start, qsizetype end, bool isEmoji) {
    if (start == end && !characters.isEmpty()) return;
    TextItem piece = item;
    piece.start = item.start + start;
    piece.length = end - start;
    if (isEmoji) {
      piece.font.setFamily(emojiFamily);
      piece.outlines = {};
      piece.glyphMap = {};
    }
    items->append(piece);
  };
  qsizetype start = 0;
  for (qsizetype i = 0; i < characters.size();) {
    qsizetype end = i;
    while (const qsizetype length = emojiLength(characters, end)) end += length;
    if (end > i) {
      append(start, i, false);
      append(i, end, true);
      start = end;
    }
    i = std::max(end, i + 1);
  }
  append(start, characters.size(), false);
}

}  // namespace

void ItemizedText::setLetterSpacing(double extra) {
  for (TextItem& item : items) {
    const double spacing = item.style.kerning + item.spacing + extra;
    if (spacing == 0 && item.style.ligatures) continue;
    // Any spacing switches ligatures off.
    item.font.setLetterSpacing(QFont::AbsoluteSpacing,
                               spacing != 0 ? spacing * kLayoutScale : 1e-2);
  }
}

void ItemizedText::setLineHeight(double height) {
  constexpr double kMaxScale = 1.8;
  const LineMetrics natural = items[0].metrics;
  const double scale = height / natural.height();
  if (!(scale < kMaxScale && scale > 1 / kMaxScale) || std::abs(height - natural.height()) < 0.75) {
    return;
  }
  for (const TextItem& item : items) {
    const ParagraphStyle& style = item.style.paragraph;
    if (item.metrics.height() != natural.height() || style.minLineHeight > 0 ||
        style.maxLineHeight > 0 || style.lineHeightMultiple > 0 || style.lineSpacing != 0 ||
        style.spacing != 0) {
      return;
    }
  }
  for (TextItem& item : items) {
    item.metrics.ascent = std::round(item.metrics.ascent * scale);
    item.metrics.leading = std::round(item.metrics.leading * scale);
    item.metrics.descent = height - item.metrics.ascent - item.metrics.leading;
  }
}

const TextItem& ItemizedText::itemAt(qsizetype position) const {
  const auto after =
      std::upper_bound(items.begin(), items.end(), position,
                       [](qsizetype at, const TextItem& item) { return at < item.start; });
  return after == items.begin() ? items.first() : *(after - 1);
}

ItemizedText itemize(const TextRuns& runs, const TextBox& box,
                     const FontWidthCalibrations& calibrations) {
  const bool needsCalibration = box.breaksLines() || !box.fitsText;
  ItemizedText text;
  for (const TextRun& run : runs.runs) {
    const FontWidthCalibration calibration = calibrations.value(run.style.font);
    const FontMatch match = matchFont(run.style.font, calibration.standIn);
    if (!match.isInstalled && !text.missingFonts.contains(run.style.font)) {
      text.missingFonts.append(run.style.font);
    }
    TextItem item = itemOf(run, match, box.metrics == TextBox::Metrics::Windows);
    if (needsCalibration) {
      item.spacing = calibration.spacing * std::clamp(run.style.size, 1 / kLayoutScale, kMaxSize);
      if (text.items.isEmpty()) text.widthRatio = calibration.stretch;
    }
    const QString characters = withCase(runs.text.mid(run.start, run.length), run.style.letters);
    if (!match.outlines.isEmpty()) setOutlines(match.outlines, characters, &item);
    appendPieces(item, characters, &text.items);
    text.text += characters;
  }
  text.text.replace(QChar::CarriageReturn, QChar::LineFeed);
  return text;
}

}  // namespace kelvar::render
