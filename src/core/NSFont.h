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

  /// A font of a text, which need not be installed.
  NSFont(QString fontName, double pointSize)
      : fontName_(std::move(fontName)), pointSize_(pointSize) {}
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
  /// "Roboto-Medium" for the style "Medium" of "Roboto".
  static QString postscriptName(const QString& family, const QString& style);

 private:
  QString fontName_;
  double pointSize_;
};

using NSFontRef = std::shared_ptr<NSFont>;

}  // namespace kelvar
