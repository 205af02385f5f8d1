#pragma once

#include <QFont>
#include <QString>

namespace kelvar::render {

/// A font for a PostScript name such as "Roboto-Medium", and how well it does.
struct ChosenFont {
  QFont font;  ///< Unhinted, without a size.
  /// False when another family stands in.
  bool isInstalled = false;
};

/// The installed font of that name. Where there is none, one of the same kind: the system typeface
/// of the design's platform becomes Inter, the common sans, serif and typewriter faces become what
/// fontconfig has for them, everything else the default sans; weight, slant and width are kept.
/// Needs an application with fonts. Answers are kept for the thread's life.
ChosenFont chooseFont(const QString& postScriptName);

}  // namespace kelvar::render
