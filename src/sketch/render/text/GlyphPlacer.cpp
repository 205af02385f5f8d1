#include "sketch/render/text/GlyphPlacer.h"

#include <QGlyphRun>
#include <algorithm>
#include <cmath>

#include "sketch/render/text/SyntheticBold.h"

namespace kelvar::render {
namespace {

using Alignment = ParagraphStyle::Alignment;

Alignment alignmentOf(const BrokenParagraph& paragraph) {
  const Alignment alignment = paragraph.firstItem.style.paragraph.alignment;
  if (alignment != Alignment::Natural && alignment != Alignment::Justified) return alignment;
  return paragraph.isRightToLeft ? Alignment::Right : Alignment::Left;
}

double lineHeight(double natural, const ParagraphStyle& paragraph) {
  if (paragraph.lineHeightMultiple > 0) natural *= paragraph.lineHeightMultiple;
  double height = std::max(natural, paragraph.minLineHeight);
  if (paragraph.maxLineHeight > 0) height = std::min(height, paragraph.maxLineHeight);
  return height;
}

/// Adds the underline and the line through the text.
void addDecorations(const QTextLine& line, const TextItem& item, qsizetype at, qsizetype length,
                    double baseline, QPainterPath* path) {
  if (!item.style.underline && !item.style.strikethrough) return;
  const double left = line.cursorToX(int(at)) / kLayoutScale;
  const double right =
      std::min(line.cursorToX(int(at + length)), line.naturalTextWidth()) / kLayoutScale;
  const auto addLineAt = [&](double middle) {
    path->addRect(left, middle - item.lineThickness / 2, right - left, item.lineThickness);
  };
  if (item.style.underline) addLineAt(baseline + item.underlinePosition);
  if (item.style.strikethrough) addLineAt(baseline - item.xHeight / 2);
}

}  // namespace

GlyphPlacer::GlyphPlacer(const ItemizedText& text, const TextBox& box) : text_(text), box_(box) {
  if (!box.path.isEmpty()) path_.emplace(box.path);
  layout_.missingFonts = text.missingFonts;
}

TextLayout GlyphPlacer::place(const std::vector<BrokenParagraph>& paragraphs) {
  double y = 0;
  for (const BrokenParagraph& paragraph : paragraphs) y = placeParagraph(paragraph, y);
  layout_.size.setHeight(y);
  alignLines();
  if (path_) return layout_;
  alignVertically();
  fitInk(box_, lines_, offset_, &layout_);
  return layout_;
}

/// Returns where the next paragraph begins.
double GlyphPlacer::placeParagraph(const BrokenParagraph& paragraph, double y) {
  const ParagraphStyle& style = paragraph.firstItem.style.paragraph;
  if (paragraph.start > 0) y += style.spacingBefore;
  for (const BrokenLine& line : paragraph.lines) y = placeLine(line, paragraph, y);
  return paragraph.end < text_.text.size() ? y + style.spacing : y;
}

/// Returns where the next line begins.
double GlyphPlacer::placeLine(const BrokenLine& line, const BrokenParagraph& paragraph, double y) {
  const LineMetrics metrics = metricsOf(line, paragraph.firstItem);
  const double height = lineHeight(metrics.height(), text_.itemAt(line.start).style.paragraph);
  if (isHidden(y + height / 2)) return y + height;
  const double baseline = y + baselineIn(height, metrics);
  if (lines_.isEmpty()) {
    firstBaseline_ = baseline;
    if (path_) pathStart_ = path_->nearestTo({0, baseline});
  }
  const qsizetype firstRun = layout_.runs.size();
  addRuns(line, paragraph.start, baseline);
  lines_.append({firstRun, layout_.runs.size(), line.width, alignmentOf(paragraph), line.indent,
                 line.rightIndent, baseline});
  return y + height + paragraph.firstItem.style.paragraph.lineSpacing;
}

bool GlyphPlacer::isHidden(double middle) const {
  return !lines_.isEmpty() && box_.behavior == TextBox::Behavior::Fixed &&
         box_.vertical == TextBox::Vertical::Top && box_.fitsText && middle > box_.size.height();
}

LineMetrics GlyphPlacer::metricsOf(const BrokenLine& line, const TextItem& firstItem) const {
  if (line.length == 0) return firstItem.metrics;
  LineMetrics metrics;
  text_.forEachItem(line.start, line.start + line.length,
                    [&](const TextItem& item, qsizetype, qsizetype) {
                      metrics.ascent = std::max(metrics.ascent, item.metrics.ascent);
                      metrics.descent = std::max(metrics.descent, item.metrics.descent);
                      metrics.leading = std::max(metrics.leading, item.metrics.leading);
                    });
  return metrics;
}

double GlyphPlacer::baselineIn(double height, const LineMetrics& metrics) const {
  const double spare = height - metrics.height();
  const double above = box_.hasOldLineSpacing ? spare : std::round(spare / 2);
  return above + metrics.ascent + metrics.leading;
}

void GlyphPlacer::addRuns(const BrokenLine& line, qsizetype paragraph, double baseline) {
  const QTextLine& text = line.line;
  text_.forEachItem(line.start, line.start + line.length,
                    [&](const TextItem& item, qsizetype start, qsizetype length) {
                      TextLayout::GlyphRun run{{}, item.style.color};
                      run.size = item.style.size;
                      const qsizetype at = start - paragraph;
                      const double y = baseline - item.style.baselineOffset;
                      for (const QGlyphRun& glyphs : text.glyphRuns(int(at), int(length))) {
                        addGlyphs(glyphs, text.ascent() + text.y(), y, item, &run);
                      }
                      run.path.setFillRule(Qt::WindingFill);
                      if (!path_) run.baseline = y;
                      layout_.runs.append(run);
                      // By themselves: together with letters that wind the other way, they would
                      // leave holes.
                      TextLayout::GlyphRun lines{{}, item.style.color, {}, y};
                      if (!path_) addDecorations(text, item, at, length, y, &lines.path);
                      if (!lines.path.isEmpty()) layout_.runs.append(lines);
                    });
}

void GlyphPlacer::addGlyphs(const QGlyphRun& glyphs, double layoutBaseline, double baseline,
                            const TextItem& item, TextLayout::GlyphRun* run) {
  const QRawFont font = glyphs.rawFont();
  const bool hasGlyphMap = !item.glyphMap.isEmpty() && font.familyName() == item.font.family();
  const QList<quint32> indexes = glyphs.glyphIndexes();
  const QList<QPointF> positions = glyphs.positions();
  const QList<QPointF> advances = font.advancesForGlyphIndexes(indexes);
  // Looked up by index: reading the tables with the color images would copy them.
  const bool hasImages = !font.fontTable("CBLC").isEmpty();
  const bool isColored = hasImages || !font.fontTable("COLR").isEmpty();
  for (qsizetype i = 0; i < indexes.size(); ++i) {
    const double x = positions[i].x() / kLayoutScale;
    const double y = baseline + (positions[i].y() - layoutBaseline) / kLayoutScale;
    const auto place = transformTo({x, y}, advances.value(i).x() / kLayoutScale);
    if (!place) continue;
    const QTransform toText = QTransform::fromScale(1 / kLayoutScale, 1 / kLayoutScale) * *place;
    const quint32 mapped = hasGlyphMap ? item.glyphMap.value(indexes[i]) : 0;
    // A font of images has no paths, and Qt 6.4 takes wrong advances from it after it was asked.
    const QPainterPath glyph = mapped != 0 ? item.outlines.pathForGlyph(mapped)
                               : hasImages ? QPainterPath()
                                           : font.pathForGlyph(indexes[i]);
    if (indexes[i] == 0 && !layout_.incompleteFonts.contains(item.style.font)) {
      layout_.incompleteFonts.append(item.style.font);
    }
    if (isColored && glyph.isEmpty()) {
      run->colorGlyphs.append({font, indexes[i], font.pixelSize() / kLayoutScale, *place});
      continue;
    }
    if (!path_) run->outlines.append({run->path.elementCount(), x});
    run->path.addPath(
        toText.map(embolden(glyph, item.strokeOffset * kLayoutScale, font.capHeight())));
  }
}

std::optional<QTransform> GlyphPlacer::transformTo(const QPointF& at, double advance) const {
  if (!path_) return QTransform::fromTranslate(at.x(), at.y());
  const auto place = path_->placeAt(pathStart_, at.x() + advance / 2);
  if (!place) return {};
  return QTransform::fromTranslate(-advance / 2, at.y() - firstBaseline_) * *place;
}

void GlyphPlacer::alignLines() {
  double widest = 0;
  for (const PlacedLine& line : lines_) widest = std::max(widest, line.width + line.indent);
  // What another font was measured for would overflow its frame.
  const bool isStretched = box_.fitsText && !layout_.missingFonts.isEmpty() &&
                           !box_.breaksLines() && widest > 0 && box_.size.width() > 0;
  const double stretch =
      isStretched ? std::clamp((box_.size.width() - 0.5) / widest, 0.6, 1.5) : text_.widthRatio;
  layout_.size.setWidth(widest * stretch);
  if (path_) return;
  for (const PlacedLine& line : lines_) {
    const double spare = box_.size.width() - line.width * stretch - line.indent - line.rightIndent;
    const double x = line.indent + (line.alignment == Alignment::Right    ? spare
                                    : line.alignment == Alignment::Center ? spare / 2
                                                                          : 0);
    const QTransform toPlace(stretch, 0, 0, 1, x, 0);
    for (qsizetype i = line.firstRun; i < line.lastRun; ++i) layout_.runs[i].transform(toPlace);
  }
}

void GlyphPlacer::alignVertically() {
  if (box_.behavior != TextBox::Behavior::Fixed || box_.vertical == TextBox::Vertical::Top) {
    return;
  }
  const double spare = box_.size.height() - layout_.size.height();
  offset_ = box_.vertical == TextBox::Vertical::Middle ? std::round(spare / 2) : spare;
  for (PlacedLine& line : lines_) line.baseline += offset_;
  const QTransform down = QTransform::fromTranslate(0, offset_);
  for (TextLayout::GlyphRun& run : layout_.runs) {
    run.transform(down);
    run.baseline += offset_;
  }
}

}  // namespace kelvar::render
