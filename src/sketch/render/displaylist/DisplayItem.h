#pragma once

#include <QPainterPath>
#include <QRectF>
#include <QStringList>
#include <memory>
#include <optional>
#include <vector>

#include "sketch/document/Layer.h"
#include "sketch/render/text/TextLayout.h"

namespace kelvar::render {

/// A layer in a display list, with the values derived from it for painting.
///
/// `DisplayList` makes the parts marked "on demand", each at most once until `release`.
struct DisplayItem {
  using List = std::vector<DisplayItem>;

  const Layer& layer;
  /// The identifiers of the enclosing symbols, and the number of enclosing containers.
  QStringList symbolStack = {};
  int depth = 0;
  /// The item under it in the same container; null for the lowest. A text may run along its
  /// outline.
  DisplayItem* below = nullptr;
  /// Whether to omit the images in its fills and, for a bitmap, its own image.
  bool leavesOutImages = false;

  /// On demand: the area that it may paint, in its parent's coordinates.
  std::optional<QRectF> bounds = {};
  /// On demand, for a shape: the outline in its own coordinates.
  std::optional<QPainterPath> outline = {};
  /// On demand, for a text.
  std::optional<TextRuns> textRuns = {};
  std::optional<TextLayout> text = {};
  /// On demand: the items in a container. For an instance, the only item is the expanded master of
  /// its symbol, which `symbol` holds; none if that is missing.
  std::unique_ptr<List> contents = {};
  std::unique_ptr<Layer> symbol = {};
  /// JSON values in `symbol`.
  size_t symbolValues = 0;

  const LayerProperties& properties() const { return layer.properties(); }
  const LayerStyle& style() const { return layer.style(); }
};

}  // namespace kelvar::render
