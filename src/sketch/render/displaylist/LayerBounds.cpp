#include "sketch/render/displaylist/LayerBounds.h"

#include <algorithm>

namespace kelvar::render {

QRectF grown(const QRectF& rect, double margin) {
  return rect.adjusted(-margin, -margin, margin, margin);
}

double ownBlur(const LayerStyle& style) {
  double deviation = 0;
  for (const Blur& blur : style.blurs) {
    if (blur.kind != Blur::Kind::Background) deviation = std::max(deviation, blur.radius);
  }
  return std::min(deviation, kMaxBlur);
}

/// How far an arrowhead reaches back from the end of a line, in border widths.
constexpr double kArrowhead = 12;

QRectF withStyle(const QRectF& content, const LayerStyle& style) {
  const bool hasMarkers = style.startMarker != Marker::None || style.endMarker != Marker::None;
  const double reach = std::max(hasMarkers ? kArrowhead : 4.0, style.miterLimit);
  double margin = 1;
  for (const Border& border : style.borders) margin = std::max(margin, border.thickness * reach);
  QRectF shadows = content;
  for (const Shadow& shadow : style.shadows) {
    const double blurred = 1.5 * shadow.blurRadius + std::max(0.0, 4 * shadow.spread);
    shadows |= grown(content, blurred).translated(shadow.offset);
  }
  return grown(shadows, margin + 3 * ownBlur(style));
}

QRectF textBounds(const Layer& text, const TextRuns& runs, const QPainterPath& path) {
  double size = 0;
  for (const TextRun& run : runs.runs) size = std::max(size, run.style.size + run.style.kerning);
  const bool isOneLine = getInt(text.json(), "textBehaviour") == 0;
  const double across = isOneLine ? size * double(runs.text.size()) : 2 * size;
  const double down = 2 * size * double(1 + runs.text.count(u'\n'));
  const QRectF straight = text.properties().box().adjusted(-across, -2 * size, across, down);
  if (path.isEmpty()) return straight;
  return straight | grown(path.boundingRect(), down);
}

}  // namespace kelvar::render
