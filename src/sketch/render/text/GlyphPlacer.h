#pragma once

#include <optional>
#include <vector>

#include "sketch/render/text/InkFit.h"
#include "sketch/render/text/LineBreaker.h"
#include "sketch/render/text/TextLayout.h"
#include "sketch/render/text/TextPath.h"

namespace kelvar::render {

/// The third step of layout: stacks the lines, aligns them, and turns them into glyph runs, along
/// the box's path if it has one. Use an object only once.
class GlyphPlacer {
 public:
  /// Keeps references to both.
  GlyphPlacer(const ItemizedText& text, const TextBox& box);

  TextLayout place(const std::vector<BrokenParagraph>& paragraphs);

 private:
  double placeParagraph(const BrokenParagraph& paragraph, double y);
  double placeLine(const BrokenLine& line, const BrokenParagraph& paragraph, double y);
  /// Whether a line with its middle there is below a fixed frame, which shows no such lines.
  bool isHidden(double middle) const;
  LineMetrics metricsOf(const BrokenLine& line, const TextItem& firstItem) const;
  double baselineIn(double height, const LineMetrics& metrics) const;
  void addRuns(const BrokenLine& line, qsizetype paragraph, double baseline);
  void addGlyphs(const QGlyphRun& glyphs, double layoutBaseline, double baseline,
                 const TextItem& item, TextLayout::GlyphRun* run);
  /// Where to place a glyph whose position on a straight line would be `at`.
  std::optional<QTransform> transformTo(const QPointF& at, double advance) const;
  void alignLines();
  void alignVertically();

  const ItemizedText& text_;
  const TextBox& box_;
  std::optional<TextPath> path_;
  double pathStart_ = 0, firstBaseline_ = 0;
  /// How far vertical alignment moved the text down.
  double offset_ = 0;
  /// They start at x = 0 until all widths are known.
  QList<PlacedLine> lines_;
  TextLayout layout_;
};

}  // namespace kelvar::render
