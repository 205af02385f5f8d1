#pragma once

#include <QColor>
#include <QList>
#include <QPainterPath>
#include <QRawFont>
#include <QSizeF>
#include <QStringList>
#include <QTransform>
#include <QtNumeric>

#include "sketch/render/text/FontWidthCalibration.h"
#include "sketch/render/text/TextBox.h"
#include "sketch/render/text/TextRuns.h"

namespace kelvar::render {

/// A text laid out in lines: the outlines of its glyphs, with underlines and strikethroughs,
/// relative to the layer's origin.
struct TextLayout {
  /// A glyph that is an image, such as a color emoji. `place` maps its origin on the baseline to
  /// the layer.
  struct ColorGlyph {
    QRawFont font;
    quint32 glyph = 0;
    double size = 0;
    QTransform place;
  };
  /// Where a glyph's outline is in its run's path, and where the glyph begins.
  struct Outline {
    int firstElement = 0;
    double x = 0;
  };
  /// Glyphs of one style on one line.
  struct GlyphRun {
    QPainterPath path;
    QColor color;
    QList<ColorGlyph> colorGlyphs = {};
    /// In Sketch: a fallback's glyphs may lie elsewhere. NaN if the line is not straight.
    double baseline = qQNaN();
    double size = 0;  ///< Of the font.
    /// In the order of their elements. Empty if the line is not straight.
    QList<Outline> outlines = {};
    /// Leaves the baseline as it is.
    void transform(const QTransform& transform);
  };
  QList<GlyphRun> runs;
  /// The size of all lines together, without padding.
  QSizeF size;
  /// PostScript names of fonts that a fallback replaces.
  QStringList missingFonts;
  /// PostScript names of fonts with characters that neither they nor any fallback has.
  QStringList incompleteFonts;

  QPainterPath outline() const;

  /// The text as Sketch's platform draws it with this transform, which maps it to an image. Unless
  /// the text is turned or mirrored, baselines lie on whole pixels, and glyphs begin at whole
  /// pixels or, if they are small, at halves, quarters or eighths: they are moved down and to the
  /// left.
  TextLayout onPixels(const QTransform& toImage) const;
};

/// Lays the text out: lines are broken, aligned and placed as on Sketch's platform, and glyphs are
/// unhinted, at subpixel positions.
///
/// If the frame was made to fit the text but the installed font has different widths, characters
/// are spaced to fill the frame. If a font is missing, the fallback's glyphs are stretched to the
/// bounding box that Sketch measured, if that is known. If the frame does not show the widths,
/// `calibrations` provides them, and if Sketch broke the text into more or fewer lines, the widths
/// are changed slightly until it breaks the same way.
///
/// Three steps: `itemize`, `breakLines`, `GlyphPlacer`. Requires an application with fonts.
TextLayout layoutText(const TextRuns& runs, const TextBox& box,
                      const FontWidthCalibrations& calibrations = {});

}  // namespace kelvar::render
