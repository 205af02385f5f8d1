#include "geometry/KVRect.h"

#include "geometry/PointList.h"
#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&KVRect::theClass);

}  // namespace

const ClassInfo& KVRect::theClass() {
  static const ClassInfo kClass =
      Description<KVRect>("KVRect")
          .initialiser("init", [] { return std::make_shared<KVRect>(); })
          .property("x", &KVRect::x, &KVRect::setX)
          .property("y", &KVRect::y, &KVRect::setY)
          .property("width", &KVRect::width, &KVRect::setWidth)
          .property("height", &KVRect::height, &KVRect::setHeight)
          .operation("CGRect", &KVRect::CGRect);
  return kClass;
}

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
