#pragma once

#include <QSet>

#include "sketch/render/displaylist/DisplayList.h"
#include "sketch/render/paint/DocumentImages.h"
#include "sketch/render/paint/LayerContext.h"
#include "sketch/render/paint/ShapePainter.h"

namespace kelvar::render {

/// Paints the items of a display list, from bottom to top.
///
/// A layer's shadows, fills, inner shadows and borders are painted in this order. A layer with an
/// opacity, a blend mode or a blur is first painted in isolation and then blended with the layers
/// below. Features that are not supported are approximated, with a warning. Once a stop is
/// requested, the remaining layers are skipped, and the result is useless.
class LayerPainter {
 public:
  /// Maximum depth of nested layers, symbols and masks, each of which takes some of the stack.
  static constexpr int kMaxDepth = DisplayList::kMaxDepth;
  /// Maximum number of pixels, in total, of layers that are being painted in isolation.
  static constexpr qint64 kMaxHeldPixels = qint64{1} << 29;

  /// Both arguments must outlive this object.
  LayerPainter(DisplayList* list, DocumentImages* images);

  /// Paints the layer in its place on `canvas`, which is in its parent's coordinates.
  void paintLayer(DisplayItem* item, const PaintContext& canvas);
  /// Paints the contents of an artboard or another container, including its background. The
  /// container's origin goes to the canvas's origin, whatever its position in its parent.
  void paintContents(DisplayItem* container, const PaintContext& canvas);

 private:
  void paintRange(DisplayItem::List* items, size_t first, size_t last, PaintContext canvas);
  /// Paints a mask and the layers from the next one to `last`, which it cuts with its outline. Does
  /// nothing and returns false if clipping each layer gives the same, or if pixels are short.
  bool paintCut(DisplayItem::List* items, size_t mask, size_t last, const PaintContext& canvas);
  /// Whether a mask consists of fills, and perhaps of shadows, that go on beyond its outline.
  bool hasEndlessFills(const DisplayItem& mask) const;
  /// Paints the layers from `first` to `last`, masked by the alpha of the layer before them.
  void paintMasked(DisplayItem::List* items, size_t first, size_t last, const PaintContext& canvas);
  bool isWithinLimits(const LayerContext& context);
  QRect boundsOnTile(const LayerContext& context);
  bool needsIsolation(const LayerContext& context) const;
  void paintIsolated(const LayerContext& context);
  void castGroupShadows(const LayerContext& context, BitmapTile* tile);
  void paintContent(const LayerContext& context);
  void paintGroup(const LayerContext& context);
  void paintInstance(const LayerContext& context);
  void paintArtboard(const LayerContext& context);
  void paintInFrame(const LayerContext& context, bool isClipped);
  void paintShape(const LayerContext& context);
  void blurBackgrounds(const LayerContext& context);
  bool hasGroupFill(const LayerContext& context) const;
  /// Warns once per property, naming the first layer that has it.
  void warnOfUnsupported(const DisplayItem& item);
  /// Whether `pixels`, the new total, is within `kMaxHeldPixels`. If not, warns that the item is
  /// painted without isolation.
  bool reservePixels(qint64 pixels, const DisplayItem& item);
  void warn(const QString& warning) { list_.warn(warning); }

  DisplayList& list_;
  DocumentImages& images_;
  ShapePainter shapes_;
  QSet<QString> unsupported_;
  int depth_ = 0;
  qint64 heldPixels_ = 0;
};

}  // namespace kelvar::render
