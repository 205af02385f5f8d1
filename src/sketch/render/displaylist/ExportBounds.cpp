#include "sketch/render/displaylist/ExportBounds.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "sketch/render/displaylist/LayerBounds.h"

namespace kelvar::render {
namespace {

double exportedBorder(const LayerStyle& style) {
  double margin = 0;
  for (const Border& border : style.borders) {
    const double outside = border.position == Border::Position::Inside    ? 0
                           : border.position == Border::Position::Outside ? border.thickness
                                                                          : border.thickness / 2;
    margin = std::max(margin, outside);
  }
  return margin;
}

/// Artboards that are off whole units by lost digits touch one unit more in Sketch.
QRectF aligned(const QRectF& rect) {
  constexpr double kLost = 1e-6;
  const auto edge = [](double v, double whole) {
    return std::abs(v - std::round(v)) < kLost ? whole : v;
  };
  return {
      QPointF(edge(rect.left(), std::floor(rect.left())), edge(rect.top(), std::floor(rect.top()))),
      QPointF(edge(rect.right(), std::ceil(rect.right())),
              edge(rect.bottom(), std::ceil(rect.bottom())))};
}

}  // namespace

QRectF ExportBounds::withStyle(const QRectF& rect, const LayerStyle& style) const {
  const QRectF body = grown(rect, exportedBorder(style));
  QRectF extent = body;
  for (const Shadow& shadow : style.shadows) {
    const double margin = std::max(0.0, shadow.blurRadius + shadow.spread);
    extent |= grown(body, margin + (list_.rules().countsEachShadow ? 0 : shadow.blurRadius))
                  .translated(shadow.offset);
    if (!list_.rules().countsEachShadow) break;
  }
  for (const Blur& blur : style.blurs) {
    if (blur.kind != Blur::Kind::Background) extent |= grown(body, 2 * blur.radius);
  }
  return extent;
}

/// It covers what reaches out of its master, unless that is to be cut.
QRectF ExportBounds::ofInstance(DisplayItem* instance) {
  if (DisplayList::isRecursive(*instance) || instancesLeft_-- <= 0) return {};
  DisplayItem* const master = list_.masterOf(instance);
  const bool isOpen = master && !master->properties().clipsInstance;
  const QRectF bounds = isOpen ? ofContents(master) : QRectF();
  list_.releaseWhenFull(instance);
  const double scale = instance->properties().symbolScale;
  return scale > 0 ? QTransform::fromScale(scale, scale).mapRect(bounds) : bounds;
}

QRectF ExportBounds::ofContents(DisplayItem* container) {
  QRectF extent;
  if (container->depth >= DisplayList::kMaxDepth) return extent;
  // Masks cut the layers above them, up to the first that breaks the chain.
  std::optional<QRectF> mask;
  for (DisplayItem& item : list_.contentsOf(container)) {
    const LayerProperties& layer = item.properties();
    if (layer.breaksMaskChain) mask.reset();
    const QRectF covered = of(&item);
    extent |= mask ? covered & *mask : covered;
    if (!layer.isMask || !layer.isVisible) continue;
    const QRectF cut = layer.transform.mapRect(layer.box());
    mask = mask ? cut & *mask : cut;
  }
  return extent;
}

QRectF ExportBounds::of(DisplayItem* item) {
  const LayerProperties& layer = item->properties();
  if (list_.isStopped() || !layer.isVisible || layer.kind == LayerKind::Hotspot) return {};
  QRectF extent = layer.box();
  const bool isOpenMaster = layer.kind == LayerKind::SymbolMaster && !layer.clipsInstance;
  if (isOpenMaster || (layer.kind == LayerKind::Group && !layer.clipsContent)) {
    extent |= ofContents(item);
  } else if (layer.kind == LayerKind::SymbolInstance) {
    extent |= ofInstance(item);
  }
  if (layer.isArtboard()) return aligned(layer.transform.mapRect(extent));
  return layer.transform.mapRect(withStyle(extent, item->style()));
}

}  // namespace kelvar::render
