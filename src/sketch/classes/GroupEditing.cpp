#include "sketch/classes/GroupEditing.h"

#include <algorithm>

#include "platform/QtError.h"
#include "runtime/raise.h"
#include "sketch/classes/LayerClasses.h"
#include "sketch/classes/newLayerJson.h"

namespace kelvar {
namespace {

using namespace Qt::StringLiterals;

QRectF rectInParent(const SketchLayer& layer) {
  return layer.transform().mapRect(QRectF(QPointF(), layer.frameRect().size()));
}

/// `united` of QRectF ignores rectangles without an area.
QRectF around(const QRectF& a, const QRectF& b) {
  return QRectF(QPointF(std::min(a.left(), b.left()), std::min(a.top(), b.top())),
                QPointF(std::max(a.right(), b.right()), std::max(a.bottom(), b.bottom())));
}

void moveBy(SketchLayer& layer, const QPointF& by) {
  layer.setFrame(KVRectFromCGRect(layer.frameRect().translated(by)));
}

void refuseTurned(const SketchLayer& group) {
  if (group.rotation() == 0 && !group.isFlippedHorizontal() && !group.isFlippedVertical()) return;
  raise(u"\"%1\" is rotated or mirrored, which its layers cannot take over"_s.arg(group.name()));
}

tl::unexpected<Error> refusal(const QString& why) {
  return failure(Error::Kind::InvalidArgument, why);
}

Result<SketchLayerRef> parentOfAll(const QList<SketchLayerRef>& layers) {
  if (layers.isEmpty()) return refusal(u"there are no layers to be grouped"_s);
  const SketchLayerRef parent = layers.first()->parent();
  for (const SketchLayerRef& layer : layers) {
    if (layer->isPage() || layer->node().properties().isArtboard()) {
      return refusal(u"\"%1\" cannot be put into a group"_s.arg(layer->name()));
    }
    if (layer->parent() != parent) {
      return refusal(u"the layers to be grouped are in different groups"_s);
    }
  }
  return parent;
}

}  // namespace

bool GroupEditing::canGroup(const QList<SketchLayerRef>& layers) {
  return parentOfAll(layers).has_value();
}

SketchLayerRef GroupEditing::group(const QList<SketchLayerRef>& layers) {
  const SketchLayerRef parent = orRaise(parentOfAll(layers));
  QList<SketchLayerRef> ordered = layers;
  qsizetype index = 0;
  if (parent) {
    const auto place = [&](const SketchLayerRef& layer) {
      return parent->children().indexOf(layer);
    };
    std::sort(ordered.begin(), ordered.end(),
              [&](const auto& a, const auto& b) { return place(a) < place(b); });
    ordered.erase(std::unique(ordered.begin(), ordered.end()), ordered.end());
    index = place(ordered.last()) + 1;
  }
  QRectF frame = rectInParent(*ordered.first());
  for (const SketchLayerRef& layer : ordered) frame = around(frame, rectInParent(*layer));
  const SketchLayerRef group = newLayerOfKind("group", frame);
  if (parent) insertOrRaise(*parent, group, index);
  for (const SketchLayerRef& layer : ordered) {
    insertOrRaise(*group, layer, group->children().size());
    moveBy(*layer, -frame.topLeft());
  }
  return group;
}

QList<SketchLayerRef> GroupEditing::ungroup(SketchLayer& group) {
  const SketchLayerRef self = refTo(group);
  const SketchLayerRef parent = group.parent();
  if (!parent || group.isArtboard()) {
    raise(u"\"%1\" is in no group that could take its layers"_s.arg(group.name()));
  }
  refuseTurned(group);
  const QList<SketchLayerRef> layers = group.children();
  const QPointF origin = group.frameRect().topLeft();
  for (const SketchLayerRef& layer : layers) {
    insertOrRaise(*parent, layer, parent->children().indexOf(self));
    moveBy(*layer, origin);
  }
  group.removeFromParent();
  return layers;
}

QRectF GroupEditing::childrenRect(const SketchLayer& group) {
  if (group.children().isEmpty()) return {};
  QRectF rect = rectInParent(*group.children().first());
  for (const SketchLayerRef& layer : group.children()) rect = around(rect, rectInParent(*layer));
  return rect;
}

void GroupEditing::fitToChildren(SketchLayer& group) {
  if (group.children().isEmpty()) return;
  refuseTurned(group);
  const QRectF rect = childrenRect(group);
  for (const SketchLayerRef& layer : group.children()) moveBy(*layer, -rect.topLeft());
  group.setFrame(KVRectFromCGRect(rect.translated(group.frameRect().topLeft())));
}

}  // namespace kelvar
