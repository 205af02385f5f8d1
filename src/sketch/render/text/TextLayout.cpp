#include "sketch/render/text/TextLayout.h"

#include <optional>

#include "sketch/render/text/FrameFit.h"
#include "sketch/render/text/GlyphPlacer.h"
#include "sketch/render/text/ItemizedText.h"
#include "sketch/render/text/LineBreaker.h"

namespace kelvar::render {
namespace {

TextLayout layoutItems(ItemizedText text, const TextBox& box) {
  if (text.isFallback() && box.fitsText && !box.breaksLines()) {
    text.setLineHeight(box.size.height() / double(1 + text.text.count(QChar::LineFeed)));
  }
  text.setLetterSpacing(0);
  Paragraphs paragraphs = breakLines(text, box);
  if (const double spacing = spacingToFit(paragraphs, text, box); spacing != 0) {
    text.setLetterSpacing(spacing);
    paragraphs = breakLines(text, box);
  }
  TextLayout layout = GlyphPlacer(text, box).place(paragraphs);
  if (!box.breaksLines() || !box.fitsText) return layout;
  const std::optional<double> ratio = widthRatioToFit(text, box, paragraphs, layout.size.height());
  if (!ratio) return layout;
  text.widthRatio = *ratio;
  return GlyphPlacer(text, box).place(breakLines(text, box));
}

}  // namespace

void TextLayout::GlyphRun::transform(const QTransform& transform) {
  path = transform.map(path);
  for (ColorGlyph& glyph : colorGlyphs) glyph.place *= transform;
}

QPainterPath TextLayout::outline() const {
  QPainterPath outline;
  outline.setFillRule(Qt::WindingFill);
  for (const GlyphRun& run : runs) outline.addPath(run.path);
  return outline;
}

TextLayout layoutText(const TextRuns& runs, const TextBox& box,
                      const FontWidthCalibrations& calibrations) {
  const TextLayout layout = layoutItems(itemize(runs, box, calibrations), box);
  if (box.metrics != TextBox::Metrics::Frame || box.showsHeight(layout.size.height())) {
    return layout;
  }
  TextBox windows = box;
  windows.metrics = TextBox::Metrics::Windows;
  const TextLayout other = layoutItems(itemize(runs, windows, calibrations), windows);
  return box.showsHeight(other.size.height()) ? other : layout;
}

}  // namespace kelvar::render
