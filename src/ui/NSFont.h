#pragma once

#include <QFont>

#include "runtime/Object.h"

namespace kelvar {

/// A font of a control. Sizes are points of the layout, which are the widgets' pixels.
class KELVAR_EXPORT NSFont : public Object {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  explicit NSFont(const QFont& font) : font_(font) {}
  const QFont& font() const { return font_; }

  QString fontName() const;
  QString familyName() const { return font_.family(); }
  double pointSize() const;

 private:
  const QFont font_;
};

using NSFontRef = std::shared_ptr<NSFont>;

}  // namespace kelvar
