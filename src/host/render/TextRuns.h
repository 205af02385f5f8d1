#pragma once

#include <QColor>
#include <QList>
#include <QString>
#include <nlohmann/json_fwd.hpp>
#include <optional>

namespace kelvar::render {

/// Lines of a paragraph, in document units. 0 leaves a height to the font.
struct ParagraphStyle {
  enum class Alignment { Left = 0, Right = 1, Center = 2, Justified = 3, Natural = 4 };
  Alignment alignment = Alignment::Natural;
  double leastLineHeight = 0, mostLineHeight = 0;
  /// The font's line height is taken this many times; 0 is once.
  double lineHeightMultiple = 0;
  double lineSpacing = 0;  ///< After each line.
  double spacing = 0;      ///< After the paragraph.
  double spacingBefore = 0;
  /// From the left, of the first line and of the others.
  double firstIndent = 0, indent = 0;
  /// Where lines end, from the left; from the right when it is not positive.
  double tail = 0;
  /// Tab stops from the left; the platform's own where there are none.
  QList<double> tabs = {};
};

/// How characters look.
struct CharacterStyle {
  enum class Case { AsTyped = 0, Upper = 1, Lower = 2 };
  /// The PostScript name, such as "Roboto-Medium".
  QString font = QStringLiteral("Helvetica");
  double size = 12;
  /// Of a variable font, where it says; else the font's name does.
  int weight = 0;
  /// Whether the font is varied in other ways.
  bool hasVariations = false;
  QColor color = Qt::black;
  /// Added after each character.
  double kerning = 0;
  /// How far the characters are lifted.
  double baselineOffset = 0;
  Case letters = Case::AsTyped;
  bool underline = false, strikethrough = false, ligatures = true;
  ParagraphStyle paragraph;
};

/// Some characters of a text that look alike.
struct TextRun {
  qsizetype start = 0, length = 0;
  CharacterStyle style;
};

/// What a text layer says: characters, and runs that cover all of them in order.
struct TextRuns {
  QString text;
  QList<TextRun> runs;
};

/// Of a text layer's JSON, in the forms of all versions. Characters that no run covers look like
/// the layer's text style.
TextRuns readTextRuns(const nlohmann::ordered_json& layer);

/// Of the "encodedAttributes" of a text style, or of the "attributes" of a run.
CharacterStyle readCharacterStyle(const nlohmann::ordered_json& attributes);

}  // namespace kelvar::render
