#pragma once

#include <QRectF>

#include "sketch/render/displaylist/DisplayList.h"

namespace kelvar::render {

/// Computes the areas that layers cover, including borders, blurs and shadows to the extent that
/// Sketch counts them for exports: a shadow extends to its blur radius. Empty for hidden layers;
/// the frame for slices. These areas determine the size of exported images, and may be smaller than
/// what is painted.
class ExportBounds {
 public:
  /// `list` must outlive this object.
  explicit ExportBounds(DisplayList* list) : list_(*list) {}

  /// The area that an item covers, in its parent's coordinates.
  QRectF of(DisplayItem* item);
  /// The area that the layers in a container cover, in the container's coordinates.
  QRectF ofContents(DisplayItem* container);

 private:
  QRectF ofInstance(DisplayItem* instance);
  QRectF withStyle(const QRectF& rect, const LayerStyle& style) const;

  DisplayList& list_;
  /// The number of instances that may still be expanded.
  int instancesLeft_ = DisplayList::kMaxLayers;
};

}  // namespace kelvar::render
