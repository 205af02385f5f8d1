#pragma once

#include <QFont>
#include <QString>

namespace kelvar::render {

/// Heights above and below the baseline and between lines, in ems.
struct FontMetrics {
  double ascent = 0, descent = 0, leading = 0;
  bool areKnown() const { return ascent > 0; }
};

/// A font for a PostScript name such as "Roboto-Medium", and how well it does.
struct ChosenFont {
  QFont font;  ///< Unhinted, without a size.
  /// False when another family stands in.
  bool isInstalled = false;
  /// Of the font that is missing, where another stands in and they are known.
  FontMetrics metrics;
  /// A family with the same widths whose letters are nearer to the missing font's, to be drawn in
  /// place of those of `font`; empty for none.
  QString outlines;
  /// How far outlines are to be moved outwards for a weight that the stand-in lacks, in ems.
  double boldness = 0;
};

/// The installed font of that name. Where there is none, the nearest that is installed: metric
/// twins of common fonts, Inter for the system typeface of the design's platform, others of the
/// same kind of letters, Inter again for everything else; weight, slant and width are kept. Needs
/// an application with fonts. Answers are kept for the thread's life.
ChosenFont chooseFont(const QString& postScriptName);

}  // namespace kelvar::render
