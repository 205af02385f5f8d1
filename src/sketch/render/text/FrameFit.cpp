#include "sketch/render/text/FrameFit.h"

#include <algorithm>
#include <cmath>

namespace kelvar::render {
namespace {

constexpr double kStep = 0.01;
constexpr int kMaxSteps = 4, kMaxFallbackSteps = 12;
/// Of a line's width.
constexpr double kTolerance = 0.015;

qsizetype lineCount(const Paragraphs& paragraphs) {
  size_t count = 0;
  for (const BrokenParagraph& paragraph : paragraphs) count += paragraph.lines.size();
  return qsizetype(count);
}

const BrokenLine* widestLine(const Paragraphs& paragraphs) {
  const BrokenLine* widest = nullptr;
  for (const BrokenParagraph& paragraph : paragraphs) {
    for (const BrokenLine& line : paragraph.lines) {
      if (!widest || widest->width < line.width) widest = &line;
    }
  }
  return widest;
}

qsizetype emptyLinesAtEnd(const QString& text) {
  qsizetype count = 0;
  while (count < text.size() && text[text.size() - 1 - count] == QChar::LineFeed) ++count;
  return count;
}

/// The number of lines that the frame was made for; 0 if it does not tell. Some frames have no room
/// for empty lines at the end.
qsizetype recordedLineCount(const QString& text, const TextBox& box, qsizetype count,
                            double height) {
  if (box.behavior != TextBox::Behavior::AutoHeight || count == 0) return 0;
  const double lines = box.size.height() * double(count) / height;
  const double whole = std::round(lines);
  const bool isWhole = std::abs(lines - whole) < 0.2 && whole < 1000;
  const auto recorded = qsizetype(whole);
  const bool isShort = recorded < count && recorded >= count - emptyLinesAtEnd(text);
  return !isWhole ? 0 : isShort ? count : recorded;
}

/// How far the widest line is from the ink that Sketch measured, as a fraction of it.
double misfit(const Paragraphs& paragraphs, double ratio, double inkWidth) {
  return std::abs(widestLine(paragraphs)->width * ratio / inkWidth - 1);
}

}  // namespace

double spacingToFit(const Paragraphs& paragraphs, const ItemizedText& text, const TextBox& box) {
  if (box.breaksLines() || !box.fitsText) return 0;
  const BrokenLine* const widest = widestLine(paragraphs);
  if (!widest) return 0;
  const double missing = box.size.width() - widest->width;
  const bool isRounding = missing > -0.1 && missing <= 1;
  const bool isFarOff = std::abs(missing) > kMaxSpacing * widest->width;
  if (isRounding || widest->length < 2 || (isFarOff && !text.isFallback())) return 0;
  const double most = (text.isFallback() ? kMaxFallbackSpacing : 1) * widest->width;
  return std::clamp(missing - 0.5, -most, most) / double(widest->length);
}

std::optional<double> widthRatioToFit(ItemizedText text, const TextBox& box,
                                      const Paragraphs& paragraphs, double height) {
  const qsizetype count = lineCount(paragraphs);
  const qsizetype recorded = recordedLineCount(text.text, box, count, height);
  const qsizetype wanted = recorded == 0 ? count : recorded;
  const bool hasInk = text.isFallback() && box.hasInkInside(height, count);
  const double before = text.widthRatio;
  double least = INFINITY;
  if (count == wanted) {
    if (count == 1 || !hasInk) return {};
    least = misfit(paragraphs, before, box.ink.width());
    if (least < kTolerance) return {};
  }
  std::optional<double> best;
  const int steps = text.isFallback() ? kMaxFallbackSteps : kMaxSteps;
  for (int i = 1; i <= steps; ++i) {
    for (const int sign : {-1, 1}) {
      if (count != wanted && sign != (count > wanted ? -1 : 1)) continue;
      text.widthRatio = before * (1 + sign * i * kStep);
      const Paragraphs broken = breakLines(text, box);
      if (lineCount(broken) != wanted) continue;
      if (!hasInk) return text.widthRatio;
      const double off = misfit(broken, text.widthRatio, box.ink.width());
      if (!(off < least)) continue;
      least = off;
      best = text.widthRatio;
    }
    if (least < kTolerance) break;
  }
  return best;
}

}  // namespace kelvar::render
