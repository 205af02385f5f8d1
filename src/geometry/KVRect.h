#pragma once

#include <QRectF>

#include "runtime/Object.h"

namespace kelvar {

/// A shared, mutable rectangle: top-left corner and size in document units, y down. Every function
/// that takes one treats null as the zero rectangle (`rectOrZero`).
class KELVAR_EXPORT KVRect : public Object {
 public:
  static const ClassInfo& staticClassInfo();
  const ClassInfo& classInfo() const override { return staticClassInfo(); }

  double x() const { return x_; }
  void setX(double x) { x_ = x; }
  double y() const { return y_; }
  void setY(double y) { y_ = y; }
  double width() const { return width_; }
  void setWidth(double width) { width_ = width; }
  double height() const { return height_; }
  void setHeight(double height) { height_ = height; }

  QRectF CGRect() const;

  /// "{x, y, width, height}", whole numbers without a fraction.
  QString description() const override;

 private:
  double x_ = 0;
  double y_ = 0;
  double width_ = 0;
  double height_ = 0;
};

using KVRectRef = std::shared_ptr<KVRect>;

/// The plain rectangle; (0, 0, 0, 0) for null.
KELVAR_EXPORT QRectF rectOrZero(const KVRectRef& rect);

}  // namespace kelvar

extern "C" {

KELVAR_EXPORT kelvar::KVRectRef KVRectMake(double x, double y, double width, double height);
KELVAR_EXPORT kelvar::KVRectRef KVRectFromCGRect(QRectF rect);
}
