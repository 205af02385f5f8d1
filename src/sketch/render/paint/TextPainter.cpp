#include "sketch/render/paint/TextPainter.h"

#include <QGlyphRun>
#include <algorithm>

#include "platform/image/ColorProfile.h"
#include "sketch/render/paint/FillPainter.h"
#include "sketch/render/paint/compose.h"
#include "sketch/render/paint/paintInBands.h"

namespace kelvar::render {
namespace {

/// As sharp as the image: each at the size that it has there.
void paintColorGlyph(const TextLayout::ColorGlyph& glyph, double opacity,
                     const PaintContext& canvas) {
  const QTransform toImage = glyph.place * canvas.toImage();
  // No glyph reaches farther from its origin; those outside would be scaled in vain.
  const double reach = 2 * glyph.size;
  const QRectF around(-reach, -reach, 2 * reach, 2 * reach);
  if (!toImage.mapRect(around).intersects(canvas.tile().rect())) return;
  const double scale = std::clamp(scaleOf(toImage), 1e-3, 1e3);
  QRawFont font = glyph.font;
  font.setPixelSize(std::clamp(glyph.size * scale, 1.0, 1000.0));
  QGlyphRun run;
  run.setRawFont(font);
  run.setGlyphIndexes({glyph.glyph});
  run.setPositions({QPointF()});
  ScopedPainter painter(canvas);
  painter->setOpacity(opacity);
  painter->setWorldTransform(glyph.place, true);
  painter->scale(1 / scale, 1 / scale);
  painter->drawGlyphRun({}, run);
}

void paintColorGlyphs(const TextLayout& text, const PaintContext& canvas) {
  for (const TextLayout::GlyphRun& run : text.runs) {
    for (const TextLayout::ColorGlyph& glyph : run.colorGlyphs) {
      paintColorGlyph(glyph, run.color.alphaF(), canvas);
    }
  }
}

/// Onto a canvas of that space; the glyphs are in sRGB.
void paintColorGlyphsInDisplayP3(const TextLayout& text, const PaintContext& canvas) {
  const bool hasColorGlyphs = std::any_of(text.runs.begin(), text.runs.end(), [](const auto& run) {
    return !run.colorGlyphs.isEmpty();
  });
  if (!hasColorGlyphs) return;
  BitmapTile alone = BitmapTile::of(canvas.tile().rect());
  if (alone.isEmpty()) return;
  paintColorGlyphs(text, {&alone, canvas.toImage()});
  alone.pixels = toDisplayP3(alone.pixels);
  compose(alone, canvas, BlendMode::Normal, 1);
}

ShapePainter::Body bodyOf(const TextLayout& text) {
  return {.isFilled = !text.runs.isEmpty(),
          .isOpaque = std::any_of(text.runs.begin(), text.runs.end(),
                                  [](const auto& run) { return run.color.alpha() == 255; })};
}

}  // namespace

void paintText(const LayerContext& context, const TextLayout& layout, DisplayList* list,
               ShapePainter* shapes, bool usesDisplayP3) {
  const PaintContext& canvas = context.canvas;
  const TextLayout text =
      list->rules().alignsBaselines ? layout.onPixels(canvas.toImage()) : layout;
  usesDisplayP3 ? paintColorGlyphsInDisplayP3(text, canvas) : paintColorGlyphs(text, canvas);
  const QPainterPath outline = text.outline();
  if (outline.isEmpty()) return;
  if (!context.style().fills.isEmpty()) {
    shapes->paintShadows(context, outline);
    shapes->paintFills(context, outline);
  } else {
    if (!context.style().shadows.isEmpty()) {
      shapes->paintShadows(context, shapes->shadowSourceOf(context, outline, bodyOf(text)));
    }
    paintInBands(canvas, outline, list->stop(), [&](const PaintContext& part) {
      ScopedPainter painter(part);
      for (const TextLayout::GlyphRun& run : text.runs) painter->fillPath(run.path, run.color);
    });
  }
  shapes->paintInnerShadows(context, outline);
  shapes->paintBorders(context, outline);
}

}  // namespace kelvar::render
