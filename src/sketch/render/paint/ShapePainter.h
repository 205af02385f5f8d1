#pragma once

#include "sketch/render/displaylist/DisplayList.h"
#include "sketch/render/paint/DocumentImages.h"
#include "sketch/render/paint/LayerContext.h"
#include "sketch/render/paint/ShadowPainter.h"

namespace kelvar::render {

/// Paints a style along and within an outline: shadows, fills, inner shadows and borders, to be
/// called in this order. Outlines are in the layer's coordinates.
class ShapePainter {
 public:
  ShapePainter(DisplayList* list, DocumentImages* images) : list_(*list), images_(*images) {}

  /// The inside of an outline as it casts a shadow: whether it is filled, and whether the fill is
  /// opaque.
  struct Body {
    bool isFilled = false;
    bool isOpaque = false;
    static Body of(const LayerStyle& style);
  };
  ShadowSource shadowSourceOf(const LayerContext& context, const QPainterPath& outline,
                              const Body& body);
  void paintShadows(const LayerContext& context, const ShadowSource& source);
  /// Paints the shadows of a shape, if it has any.
  void paintShadows(const LayerContext& context, const QPainterPath& outline);
  void paintFills(const LayerContext& context, const QPainterPath& outline);
  void paintInnerShadows(const LayerContext& context, const QPainterPath& outline);
  void paintBorders(const LayerContext& context, const QPainterPath& outline);
  /// Paints the fills of a group, an instance or a bitmap onto the tile with its contents, only
  /// where there are contents.
  void tint(const LayerContext& context, BitmapTile* tile);

 private:
  void paintWith(const LayerContext& context, const Paint& paint, const QPainterPath& area,
                 const QRectF& box, const PaintContext& canvas);
  QList<QPainterPath> bordersForShadow(const LayerContext& context, const QPainterPath& outline,
                                       bool isFilled);
  /// The edge from which a shadow is spread, in the image's pixels.
  QPainterPath spreadEdge(const LayerContext& context, const QPainterPath& filled,
                          const QList<QPainterPath>& borders, bool isFilled);
  /// See `canCombine`; warns if it returns false.
  bool combines(const LayerContext& context, const QPainterPath& first,
                const QPainterPath& second = {});
  /// An equivalent outline for the even-odd fill rule.
  QPainterPath plainOutline(const LayerContext& context, const QPainterPath& outline);
  ImageRef patternOf(const LayerContext& context, const Paint& paint);

  DisplayList& list_;
  DocumentImages& images_;
};

}  // namespace kelvar::render
