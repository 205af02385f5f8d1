#pragma once

#include <QTextLayout>
#include <memory>
#include <vector>

#include "sketch/render/text/ItemizedText.h"

namespace kelvar::render {

/// One line of a paragraph. Lengths are in document units, before the text's width ratio.
struct BrokenLine {
  QTextLine line;
  qsizetype start = 0, length = 0;  ///< Characters, in the whole text.
  double width = 0;
  double indent = 0, rightIndent = 0;
};

/// A paragraph of a text, broken into lines.
struct BrokenParagraph {
  qsizetype start = 0, end = 0;  ///< Without the line feed.
  TextItem firstItem;
  bool isRightToLeft = false;
  /// Keeps the lines alive.
  std::unique_ptr<QTextLayout> layout;
  std::vector<BrokenLine> lines;
};

using Paragraphs = std::vector<BrokenParagraph>;

/// The second step of layout: breaks the text into lines that fit the box, or only at line feeds if
/// the box grows with its text.
Paragraphs breakLines(const ItemizedText& text, const TextBox& box);

}  // namespace kelvar::render
