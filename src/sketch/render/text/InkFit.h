#pragma once

#include <QList>

#include "sketch/render/text/TextBox.h"
#include "sketch/render/text/TextLayout.h"

namespace kelvar::render {

/// The glyph runs of a line in a layout, from `firstRun` up to `lastRun`, and how it is aligned.
/// Lengths are in document units.
struct PlacedLine {
  qsizetype firstRun, lastRun;
  double width;
  ParagraphStyle::Alignment alignment;
  double indent, rightIndent;
  double baseline;
};

/// Moves and scales the glyphs of fallback fonts to the bounding box that Sketch measured for those
/// of the missing fonts, as far as it agrees with the frame, the alignment and the fallback: each
/// line about its baseline and its aligned side. `offset` is how far the text was moved down in its
/// frame, which Sketch does not count.
void fitInk(const TextBox& box, const QList<PlacedLine>& lines, double offset, TextLayout* layout);

}  // namespace kelvar::render
