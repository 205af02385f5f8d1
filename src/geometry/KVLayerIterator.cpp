#include "geometry/KVLayerIterator.h"

#include <stdexcept>

#include "geometry/KVBezierPath.h"
#include "geometry/cornersOfPath.h"
#include "platform/Log.h"
#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&KVLayerIterator::staticClassInfo);

}  // namespace

const ClassInfo& KVLayerIterator::staticClassInfo() {
  static const ClassInfo kClass =
      ClassInfoBuilder<KVLayerIterator>("KVLayerIterator")
          .initializer(
              "init", [] { return std::make_shared<KVLayerIterator>(); },
              "Creates a reader of corner points.")
          .operation(
              "extractPointsFromLayer:",
              [](KVLayerIterator&, const QVariant& layer) {
                return stringsFromPoints(cornersOfLayerValue(layer));
              },
              "Returns the corners of the path of the layer's first child, clockwise on "
              "screen; an empty list if there is no path. A dictionary with \"layers\" may be "
              "the layer.");
  return kClass;
}

PointList KVLayerIterator::extractPointsFromLayer(const ObjectRef& layer) const {
  return stringsFromPoints(cornersOfLayer(layer));
}

std::vector<warp::Point> KVLayerIterator::cornersOfLayer(const ObjectRef& layer) {
  return cornersOfLayerValue(toVariant(layer));
}

std::vector<warp::Point> KVLayerIterator::cornersOfLayerValue(const QVariant& layer) {
  const auto object = fromVariant<ObjectRef>(layer);
  if (!object && layer.typeId() != QMetaType::QVariantMap) {
    throw std::invalid_argument("a layer is an object or a dictionary");
  }
  const QStringList described = !object   ? QStringList{QStringLiteral("a dictionary")}
                                : *object ? QStringList{(*object)->description()}
                                          : QStringList();
  logLine(u"Extract points from layer: %@", described);
  const QVariantList children = kelvar::valueForKeyPath(layer, QStringLiteral("layers")).toList();
  if (children.isEmpty()) return {};
  const QVariant value = kelvar::valueForKeyPath(children.first(), QStringLiteral("bezierPath"));
  BezierPath path = value.value<BezierPath>();
  if (!KVBezierPath::bezierPathIsClockwise(path)) path = KVBezierPath::bezierPathReversed(path);
  return cornersOfPath(path);
}

}  // namespace kelvar
