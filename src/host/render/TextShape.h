#pragma once

#include <QColor>
#include <QList>
#include <QPainterPath>
#include <QSizeF>
#include <QStringList>

#include "host/render/TextRuns.h"

namespace kelvar::render {

/// How a text layer's frame and its lines go together.
struct TextBox {
  enum class Behaviour { AutoWidth = 0, AutoHeight = 1, Fixed = 2 };
  enum class Vertical { Top = 0, Middle = 1, Bottom = 2 };
  QSizeF size;
  Behaviour behaviour = Behaviour::AutoWidth;
  Vertical vertical = Vertical::Top;
  /// Whether glyphs are centred in a fixed line height, rather than set onto its bottom.
  bool centresInLineHeight = false;
  /// Whether the frame was made for this text.
  bool fitsText = true;
};

/// A text set in lines: outlines of its glyphs and of the lines drawn along them, from the layer's
/// origin.
struct TextShape {
  struct Area {
    QPainterPath path;
    QColor color;
  };
  QList<Area> areas;
  /// Of all lines, without what is added around them.
  QSizeF size;
  /// PostScript names for which another font stands in.
  QStringList missingFonts;

  QPainterPath outline() const;
};

/// Sets the text: lines are broken, aligned and placed as the design's platform does it, glyphs are
/// unhinted and stand at fractions of a pixel. Where a font is missing and the frame was made to
/// fit the text, the stand-in's glyphs are stretched to the frame's width. Needs an application
/// with fonts.
TextShape shapeText(const TextRuns& runs, const TextBox& box);

}  // namespace kelvar::render
