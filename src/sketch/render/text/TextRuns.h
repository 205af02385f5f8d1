#pragma once

#include <QColor>
#include <QList>
#include <QString>
#include <nlohmann/json_fwd.hpp>
#include <optional>

namespace kelvar::render {

/// How a paragraph's lines are set. Lengths are in document units. With a height of 0, the font
/// decides.
struct ParagraphStyle {
  enum class Alignment { Left = 0, Right = 1, Center = 2, Justified = 3, Natural = 4 };
  Alignment alignment = Alignment::Natural;
  double minLineHeight = 0, maxLineHeight = 0;
  /// Factor for the font's line height; 0 is read as 1.
  double lineHeightMultiple = 0;
  double lineSpacing = 0;  ///< After each line.
  double spacing = 0;      ///< After the paragraph.
  double spacingBefore = 0;
  /// Indents from the left, of the first line and of the others.
  double firstIndent = 0, indent = 0;
  /// Where lines end, from the left; if not positive, from the right.
  double tail = 0;
  /// Tab stops from the left; the default ones if empty.
  QList<double> tabs = {};
};

/// How characters look.
struct CharacterStyle {
  enum class Case { AsTyped = 0, Upper = 1, Lower = 2 };
  /// The PostScript name, such as "Roboto-Medium".
  QString font = QStringLiteral("Helvetica");
  double size = 12;
  /// The weight of a variable font; with 0, the font's name decides.
  int weight = 0;
  /// Whether other axes of the variable font are set.
  bool hasVariations = false;
  QColor color = Qt::black;
  /// Space added after each character, in document units.
  double kerning = 0;
  /// How far the characters are raised, in document units.
  double baselineOffset = 0;
  Case letters = Case::AsTyped;
  bool underline = false, strikethrough = false, ligatures = true;
  ParagraphStyle paragraph;
};

/// Characters of one style.
struct TextRun {
  qsizetype start = 0, length = 0;
  CharacterStyle style;
};

/// The characters of a text layer, and runs that cover all of them in order.
struct TextRuns {
  QString text;
  QList<TextRun> runs;
};

/// Reads a text layer's JSON, in the formats of all versions. Characters that no run covers have
/// the layer's text style.
TextRuns readTextRuns(const nlohmann::ordered_json& layer);

/// Reads the "encodedAttributes" of a text style, or the "attributes" of a run.
CharacterStyle readCharacterStyle(const nlohmann::ordered_json& attributes);

}  // namespace kelvar::render
