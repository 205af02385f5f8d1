#pragma once

#include <QFont>

#include "runtime/Object.h"

namespace kelvar {

/// A font of a control or of a text, by its PostScript name. Sizes are points of the layout, which
/// are the widgets' pixels.
class KELVAR_EXPORT NSFont : public Object {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  /// A font of a text, which need not be installed. A size that is none becomes the default.
  NSFont(QString fontName, double pointSize);
  explicit NSFont(const QFont& font);

  /// For drawing: the closest that is installed. Requires an application with fonts.
  QFont font() const;

  const QString& fontName() const { return fontName_; }
  double pointSize() const { return pointSize_; }
  QString familyName() const;
  /// Such as "Roboto Medium".
  QString displayName() const;

  /// Whether a font of this family or PostScript name is installed.
  static bool isInstalled(const QString& name);
  /// Without the foundry, which the system puts into the names of families that it tells apart.
  static QString withoutFoundry(const QString& family);
  /// "Roboto-Medium" for the style "Medium" of "Roboto".
  static QString postscriptName(const QString& family, const QString& style);

 private:
  QString fontName_;
  double pointSize_;
};

using NSFontRef = std::shared_ptr<NSFont>;

}  // namespace kelvar
