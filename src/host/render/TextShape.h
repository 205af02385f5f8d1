#pragma once

#include <QColor>
#include <QList>
#include <QPainterPath>
#include <QRawFont>
#include <QRectF>
#include <QSizeF>
#include <QStringList>
#include <QTransform>

#include "host/render/FontMeasures.h"
#include "host/render/TextRuns.h"

namespace kelvar::render {

/// How a text layer's frame and its lines go together.
struct TextBox {
  enum class Behaviour { AutoWidth = 0, AutoHeight = 1, Fixed = 2 };
  enum class Vertical { Top = 0, Middle = 1, Bottom = 2 };
  QSizeF size;
  Behaviour behaviour = Behaviour::AutoWidth;
  Vertical vertical = Vertical::Top;
  /// The line spacing that the host has kept for texts of old documents: glyphs stand on the bottom
  /// of a fixed line height rather than in its middle, and lines are as high as Windows sets them.
  /// Worked out from frames and pictures in documents of Sketch 49 and 52.
  bool hasOldLineSpacing = false;
  /// Whether the frame was made for this text.
  bool fitsText = true;
  /// What the baseline runs along in place of straight on, from the point nearest to its start; in
  /// the layer's coordinates. Empty for none.
  QPainterPath path = {};
  /// What the glyphs cover, as the host measured it; empty where it is not known.
  QRectF ink;
};

/// Of a text layer's JSON, without the path.
TextBox readTextBox(const nlohmann::ordered_json& layer);

/// A text set in lines: outlines of its glyphs and of the lines drawn along them, from the layer's
/// origin.
struct TextShape {
  /// A glyph that is a picture: a coloured emoji. `place` leads from its baseline's start to the
  /// layer.
  struct Emblem {
    QRawFont font;
    quint32 glyph = 0;
    double size = 0;
    QTransform place;
  };
  struct Area {
    QPainterPath path;
    QColor color;
    QList<Emblem> emblems = {};
    void move(const QTransform& transform);
  };
  QList<Area> areas;
  /// Of all lines, without what is added around them.
  QSizeF size;
  /// PostScript names for which another font stands in.
  QStringList missingFonts;
  /// Whether some characters are in no font.
  bool lacksCharacters = false;

  QPainterPath outline() const;
};

/// Sets the text: lines are broken, aligned and placed as the design's platform does it, glyphs are
/// unhinted and stand at fractions of a pixel. Where the frame was made to fit the text but the
/// font has other widths here, characters are spaced to fill it; where a font is missing, the
/// stand-in's glyphs are stretched, to what the host measured of them if that is known. Where the
/// frame does not tell, `measures` do, and a text that the host broke into more lines or fewer has
/// its widths changed a little to break alike. Needs an application with fonts.
TextShape shapeText(const TextRuns& runs, const TextBox& box, const FontMeasures& measures = {});

}  // namespace kelvar::render
