#pragma once

#include "sketch/document/SketchLayer.h"

namespace kelvar {

/// Changes of the tree of layers that keep everything where it is on the page. They raise what
/// prevents them.
class GroupEditing {
 public:
  GroupEditing() = delete;

  /// Whether there are layers, of one parent, that a group can have.
  static bool canGroup(const QList<SketchLayerRef>& layers);
  /// Puts layers of one parent into a new group in the place of the highest. Layers without a
  /// parent make a group without one.
  static SketchLayerRef group(const QList<SketchLayerRef>& layers);
  /// Puts the layers of a group in its place and removes it. A rotated or mirrored group is
  /// refused.
  static QList<SketchLayerRef> ungroup(SketchLayer& group);
  /// Makes the group as large as the layers in it. A rotated or mirrored group is refused.
  static void fitToChildren(SketchLayer& group);
  /// Around the frames of the child layers, in the group's coordinates; empty for none.
  static QRectF childrenRect(const SketchLayer& group);
};

}  // namespace kelvar
