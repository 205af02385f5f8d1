#pragma once

#include <QFont>
#include <QString>
#include <QStringList>

namespace kelvar::render {

/// Heights above and below the baseline and between lines, in ems.
struct FontMetrics {
  double ascent = 0, descent = 0, leading = 0;
  bool areKnown() const { return ascent > 0; }
};

/// The installed font for a PostScript name such as "Roboto-Medium".
struct FontMatch {
  QFont font;  ///< Unhinted, without a size.
  /// False if `font` is a fallback from another family.
  bool isInstalled = false;
  /// The metrics of the missing font, if they are known; only for fallbacks.
  FontMetrics metrics;
  /// A family with the same widths whose glyphs are closer to those of the missing font, to be
  /// drawn instead of those of `font`; empty for none.
  QString outlines;
  /// How far to move outlines outward, in ems, to imitate a weight that the fallback lacks.
  double strokeOffset = 0;
  /// The families that may replace a missing one of which only the class of type is known, the
  /// best first; `font` is of the first. The widths in a document tell which comes nearest.
  QStringList standIns = {};
};

/// The font of that name. If it is not installed, the closest one that is: metric-compatible
/// replacements for common fonts, Inter for the system font of Sketch's platform, and for others
/// one of the same class of type (serif, sans, mono, script); weight, slant and width are kept.
/// Requires an application with fonts. Results are cached per thread.
FontMatch matchFont(const QString& postScriptName);
/// The same, in the family `standIn` if that is one of the match's stand-ins.
FontMatch matchFont(const QString& postScriptName, const QString& standIn);

/// Forgets this thread's results, because fonts were added or removed.
void forgetFontMatches();

}  // namespace kelvar::render
