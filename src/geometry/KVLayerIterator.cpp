#include "geometry/KVLayerIterator.h"

#include "geometry/KVBezierPath.h"
#include "platform/Log.h"
#include "runtime/ClassInfo.h"

namespace kelvar {
namespace {

const ClassInfo::Registration kRegistered(&KVLayerIterator::theClass);

}  // namespace

const ClassInfo& KVLayerIterator::theClass() {
  static const ClassInfo kClass =
      Description<KVLayerIterator>("KVLayerIterator")
          .initialiser("init", [] { return std::make_shared<KVLayerIterator>(); })
          .operation("extractPointsFromLayer:", &KVLayerIterator::extractPointsFromLayer);
  return kClass;
}

PointList KVLayerIterator::extractPointsFromLayer(const ObjectRef& layer) const {
  logLine(u"Extract points from layer: %@",
          layer ? QStringList{layer->description()} : QStringList{});
  if (!layer) return {};
  const QVariantList children = layer->valueForKeyPath(QStringLiteral("layers")).toList();
  if (children.isEmpty()) return {};
  const QVariant value = kelvar::valueForKeyPath(children.first(), QStringLiteral("bezierPath"));
  BezierPath path = value.value<BezierPath>();
  if (!KVBezierPath::bezierPathIsClockwise(path)) path = KVBezierPath::bezierPathReversed(path);
  return KVBezierPath::pointsFromBezierPath(path);
}

}  // namespace kelvar
