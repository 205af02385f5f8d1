#include "host/render/LayerExtent.h"

#include <algorithm>
#include <cmath>

#include "host/render/LayerOutline.h"
#include "host/render/LayerStyle.h"
#include "host/render/ShadowPainter.h"

namespace kelvar::render {
namespace {

constexpr int kFirstWithSidesOfTheirOwn = 112;

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
  for (const Shadow& shadow : style.shadows) {
    const QPointF offset = shadow.offset;
    if (documentVersion < kFirstWithSidesOfTheirOwn) {
      const double farthest = std::max(std::abs(offset.x()), std::abs(offset.y()));
      extent |= grown(body, shadowMargin(shadow) + farthest);
    } else {
      extent |= grown(body, shadowMargin(shadow)).translated(offset);
    }
  }
  for (const Blur& blur : style.blurs) {
    if (blur.kind != Blur::Kind::Background) extent |= grown(body, 2 * blur.radius);
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
  if (kind == u"group") {
    for (const SketchJson& child : listIn(layer, "layers")) {
      extent |= layerExtent(child, documentVersion);
    }
  }
  if (kind != u"artboard" && kind != u"symbolMaster") {
    extent = withStyle(extent, readLayerStyle(memberOf(layer, "style")), documentVersion);
  }
  return layerTransform(layer).mapRect(extent);
}

}  // namespace kelvar::render
