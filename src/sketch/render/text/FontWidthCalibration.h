#pragma once

#include <QHash>
#include <QString>

namespace kelvar {
class SketchDocument;
}

namespace kelvar::render {

/// Ratio of Sketch's glyph widths to those of the installed font.
struct FontWidthCalibration {
  /// Space added after each character, in ems, to compensate for a different version of the font.
  double spacing = 0;
  /// Ratio of Sketch's widths to those of the fallback for a missing font.
  double stretch = 1;
  /// The family that comes nearest to Sketch's widths, among those that may replace a missing one
  /// of which only the class of type is known; else null.
  QString standIn = {};
};

/// By PostScript name. Fonts that are not listed need no calibration.
using FontWidthCalibrations = QHash<QString, FontWidthCalibration>;

/// Measures the widths on those text layers of a document whose frames fit their characters. The
/// result is for layers whose frames do not show the width, because lines are broken or the text
/// was replaced. Requires an application with fonts.
FontWidthCalibrations calibrateFontWidths(const SketchDocument& document);

}  // namespace kelvar::render
