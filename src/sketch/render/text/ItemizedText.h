#pragma once

#include <QFont>
#include <QHash>
#include <QList>
#include <QRawFont>
#include <QString>
#include <QStringList>
#include <algorithm>

#include "sketch/render/text/FontWidthCalibration.h"
#include "sketch/render/text/TextBox.h"
#include "sketch/render/text/TextRuns.h"

namespace kelvar::render {

/// Text is laid out at this multiple of its final size, because font sizes are whole pixels and
/// advances are rounded to 64ths of a pixel.
inline constexpr double kLayoutScale = 16;

/// Heights above and below the baseline and between lines, in document units; rounded as Sketch's
/// platform rounds them.
struct LineMetrics {
  double ascent = 0, descent = 0, leading = 0;
  double height() const { return ascent + descent + leading; }
};

/// Characters of one style with the font that they are set in.
struct TextItem {
  qsizetype start = 0, length = 0;
  CharacterStyle style;
  QFont font;  ///< `kLayoutScale` times as large.
  LineMetrics metrics;
  double underlinePosition = 0, lineThickness = 0, xHeight = 0;
  double strokeOffset = 0;  ///< Distance by which outlines are moved outward.
  double spacing = 0;       ///< After each character, in addition to its kerning.
  /// A font whose glyphs are drawn instead of those of `font`, and the map from the latter to the
  /// former.
  QRawFont outlines = {};
  QHash<quint32, quint32> glyphMap = {};
};

/// The first step of layout: a text as items, each of one font.
struct ItemizedText {
  /// Letter case applied. Paragraphs end with a line feed.
  QString text;
  /// In order, covering the text. Never empty.
  QList<TextItem> items;
  /// PostScript names of fonts that are not installed.
  QStringList missingFonts;
  /// Ratio of Sketch's glyph widths to those of the available fonts.
  double widthRatio = 1;

  /// Whether fallbacks replace missing fonts.
  bool isFallback() const { return !missingFonts.isEmpty(); }

  /// Sets the letter spacing of all fonts to their items' kerning and spacing plus `extra`.
  void setLetterSpacing(double extra);

  /// Gives all lines the height `height`, if they are of one size and none has a height of its own.
  /// For fallbacks, whose own heights are not those of the missing font.
  void setLineHeight(double height);

  const TextItem& itemAt(qsizetype position) const;

  /// Calls `use(item, start, length)` for each piece of an item between two positions.
  template <class Use>
  void forEachItem(qsizetype start, qsizetype end, const Use& use) const {
    for (const TextItem& item : items) {
      const qsizetype from = std::max(start, item.start);
      const qsizetype to = std::min(end, item.start + item.length);
      if (from < to) use(item, from, to - from);
    }
  }
};

/// Chooses the fonts. Requires runs that cover the text, and an application with fonts.
ItemizedText itemize(const TextRuns& runs, const TextBox& box,
                     const FontWidthCalibrations& calibrations);

}  // namespace kelvar::render
