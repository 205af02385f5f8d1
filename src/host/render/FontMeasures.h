#pragma once

#include <QHash>
#include <QString>

namespace kelvar {
class SketchDocument;
}

namespace kelvar::render {

/// How wide a font was for the host, against the one at hand.
struct FontMeasure {
  /// Added after each character, in ems: another version of the font.
  double spacing = 0;
  /// The host's widths over those of what stands in for a missing font.
  double stretch = 1;
};

/// Measures by PostScript names. A font that is not there has the plain measure.
using FontMeasures = QHash<QString, FontMeasure>;

/// Learnt from the texts of a document whose frames grew with their characters; used for those
/// whose frames do not tell, because lines are broken or the text was replaced. Needs an
/// application with fonts.
FontMeasures measureFonts(const SketchDocument& document);

}  // namespace kelvar::render
