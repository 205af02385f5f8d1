#include "host/render/LayerExtent.h"

#include <algorithm>
#include <optional>

#include "host/SketchKind.h"
#include "host/SketchTransform.h"
#include "host/render/LayerStyle.h"
#include "host/render/ShadowPainter.h"

namespace kelvar::render {
namespace {

constexpr int kFirstWithEachShadow = 112;

double borderMargin(const LayerStyle& style) {
  double margin = 0;
  for (const Border& border : style.borders) {
    const double outside = border.position == Border::Position::Inside    ? 0
                           : border.position == Border::Position::Outside ? border.thickness
                                                                          : border.thickness / 2;
    margin = std::max(margin, outside);
  }
  return margin;
}

QRectF grown(const QRectF& rect, double margin) {
  return rect.adjusted(-margin, -margin, margin, margin);
}

QRectF withStyle(const QRectF& rect, const LayerStyle& style, int documentVersion) {
  const QRectF body = grown(rect, borderMargin(style));
  QRectF extent = body;
  const bool isOld = documentVersion < kFirstWithEachShadow;
  for (const Shadow& shadow : style.shadows) {
    const double margin = shadowMargin(shadow) + (isOld ? shadow.blurRadius : 0);
    extent |= grown(body, margin).translated(shadow.offset);
    if (isOld) break;
  }
  for (const Blur& blur : style.blurs) {
    if (blur.kind != Blur::Kind::Background) extent |= grown(body, 2 * blur.radius);
  }
  return extent;
}

/// Masks cut the layers above them, up to the first that breaks the chain.
QRectF contentsExtent(const SketchJson& layers, int documentVersion) {
  QRectF extent;
  std::optional<QRectF> mask;
  for (const SketchJson& layer : layers) {
    if (flagIn(layer, "shouldBreakMaskChain")) mask.reset();
    const QRectF covered = layerExtent(layer, documentVersion);
    extent |= mask ? covered & *mask : covered;
    if (!flagIn(layer, "hasClippingMask") || !flagIn(layer, "isVisible", true)) continue;
    const QRectF cut =
        sketchTransform(layer).mapRect(QRectF({0, 0}, rectIn(layer, "frame").size()));
    mask = mask ? cut & *mask : cut;
  }
  return extent;
}

}  // namespace

QRectF layerExtent(const SketchJson& layer, int documentVersion) {
  const QString kind = classOf(layer);
  if (!flagIn(layer, "isVisible", true) || kind == u"slice" || kind == u"MSImmutableHotspotLayer") {
    return {};
  }
  QRectF extent({0, 0}, rectIn(layer, "frame").size());
  if (kind == u"group" && !cutsItsContents(layer)) {
    extent |= contentsExtent(listIn(layer, "layers"), documentVersion);
  }
  if (!isSketchArtboard(layer)) {
    extent = withStyle(extent, readLayerStyle(memberOf(layer, "style")), documentVersion);
  }
  return sketchTransform(layer).mapRect(extent);
}

}  // namespace kelvar::render
