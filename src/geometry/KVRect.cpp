#include "geometry/KVRect.h"

#include "geometry/PointList.h"

namespace kelvar {

QRectF KVRect::CGRect() const { return {x(), y(), width(), height()}; }

QString KVRect::description() const {
  return QStringLiteral("{%1, %2, %3, %4}")
      .arg(stringFromNumber(x()), stringFromNumber(y()), stringFromNumber(width()),
           stringFromNumber(height()));
}

QRectF rectOrZero(const KVRectRef& rect) { return rect ? rect->CGRect() : QRectF(0, 0, 0, 0); }

}  // namespace kelvar

kelvar::KVRectRef KVRectMake(double x, double y, double width, double height) {
  auto rect = std::make_shared<kelvar::KVRect>();
  rect->setX(x);
  rect->setY(y);
  rect->setWidth(width);
  rect->setHeight(height);
  return rect;
}

kelvar::KVRectRef KVRectFromCGRect(QRectF rect) {
  return KVRectMake(rect.x(), rect.y(), rect.width(), rect.height());
}
