#include "geometry/KVRect.h"

#include <algorithm>
#include <iterator>

#include "geometry/PointList.h"
#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&KVRect::staticClassInfo);

/// From a structure, or from a dictionary of the same shape or with the four properties. Null for
/// anything else.
ObjectRef rectFromValue(const QVariant& value) {
  if (value.typeId() == QMetaType::QRectF) return KVRectFromCGRect(value.toRectF());
  const QVariantMap map = value.toMap();
  const bool isNested = map.contains(QStringLiteral("origin"));
  const QVariantMap origin = isNested ? map[QStringLiteral("origin")].toMap() : map;
  const QVariantMap size = isNested ? map[QStringLiteral("size")].toMap() : map;
  const QVariant sides[] = {origin[QStringLiteral("x")], origin[QStringLiteral("y")],
                            size[QStringLiteral("width")], size[QStringLiteral("height")]};
  if (!std::all_of(std::begin(sides), std::end(sides), isNumber)) return nullptr;
  return KVRectMake(sides[0].toDouble(), sides[1].toDouble(), sides[2].toDouble(),
                    sides[3].toDouble());
}

}  // namespace

const ClassInfo& KVRect::staticClassInfo() {
  static const ClassInfo kClass =
      ClassInfoBuilder<KVRect>("KVRect")
          .initializer(
              "init", [] { return std::make_shared<KVRect>(); },
              "Creates a rectangle of size zero at the origin.")
          .property("x", &KVRect::x, &KVRect::setX, "Left edge, in document units.")
          .property("y", &KVRect::y, &KVRect::setY,
                    "Top edge, in document units, growing downward.")
          .property("width", &KVRect::width, &KVRect::setWidth, "Width, in document units.")
          .property("height", &KVRect::height, &KVRect::setHeight, "Height, in document units.")
          .operation("CGRect", &KVRect::CGRect,
                     "Returns the same rectangle as a structure with origin and size.")
          .convertible(rectFromValue);
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
