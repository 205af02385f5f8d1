#pragma once

#include <QColor>
#include <QSizeF>

#include "runtime/Object.h"

namespace kelvar {

/// A drop shadow's parameters. Lengths are points; a positive height moves it up; with an invalid
/// color there is no shadow.
class KELVAR_EXPORT Shadow : public Object {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  QSizeF offset() const { return offset_; }
  void setOffset(const QSizeF& offset) { offset_ = offset; }
  /// Twice the standard deviation of the Gaussian that blurs it.
  double blurRadius() const { return blurRadius_; }
  void setBlurRadius(double radius) { blurRadius_ = radius; }
  QColor color() const { return color_; }
  void setColor(const QColor& color) { color_ = color; }

 private:
  QSizeF offset_{0, 0};
  double blurRadius_ = 0;
  QColor color_;
};

using ShadowRef = std::shared_ptr<Shadow>;

}  // namespace kelvar
