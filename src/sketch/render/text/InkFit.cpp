#include "sketch/render/text/InkFit.h"

#include <algorithm>
#include <cmath>

namespace kelvar::render {
namespace {

using Alignment = ParagraphStyle::Alignment;

/// Typefaces for the same text differ by less than these factors.
constexpr double kMaxScale = 1.25, kMaxStretch = 1.35;
/// In line heights: beyond these, something else was measured.
constexpr double kMaxMoveAcross = 0.15, kMaxMoveDown = 0.3;

bool isWithin(double factor, double most) { return factor < most && factor > 1 / most; }

QRectF inkOf(const PlacedLine& line, const TextLayout& layout) {
  QRectF ink;
  for (qsizetype i = line.firstRun; i < line.lastRun; ++i) {
    ink |= layout.runs[i].path.boundingRect();
  }
  return ink;
}

/// Sketch measured in whole units: what could have been measured so may stay.
double edge(double got, double whole, double inwards) {
  const double in = (got - whole) * inwards;
  return in >= 0 && in < 1 ? got : whole + 0.25 * inwards;
}

QRectF nearTo(const QRectF& ink, const QRectF& measured) {
  return {
      QPointF(edge(ink.left(), measured.left(), 1), edge(ink.top(), measured.top(), 1)),
      QPointF(edge(ink.right(), measured.right(), -1), edge(ink.bottom(), measured.bottom(), -1))};
}

/// `at` moves by `move`, and everything else in proportion to its distance from there.
struct Fit {
  double at = 0, move = 0, scale = 1;
  double origin() const { return at + move - scale * at; }
};

double sideOf(const QRectF& rect, Alignment alignment) {
  return alignment == Alignment::Right    ? rect.right()
         : alignment == Alignment::Center ? rect.center().x()
                                          : rect.left();
}

Fit fitAcross(const QRectF& ink, const QRectF& wanted, Alignment alignment, double lineHeight) {
  const double stretch = wanted.width() / ink.width();
  if (!isWithin(stretch, kMaxStretch)) return {};
  const double at = sideOf(ink, alignment), move = sideOf(wanted, alignment) - at;
  const bool isNear = std::abs(move) <= std::max(2.0, kMaxMoveAcross * lineHeight);
  return {at, isNear ? move : 0, stretch};
}

/// Relative to the baselines of the lines.
Fit fitDown(const QList<PlacedLine>& lines, const QList<QRectF>& inks, const QRectF& wanted,
            double lineHeight) {
  const auto hasInk = [](const QRectF& ink) { return !ink.isEmpty(); };
  const qsizetype first = std::find_if(inks.begin(), inks.end(), hasInk) - inks.begin();
  const auto end = std::find_if(inks.rbegin(), inks.rend(), hasInk).base();
  const qsizetype last = end - inks.begin() - 1;
  const double above = inks[first].top() - lines[first].baseline;
  const double wantedAbove = wanted.top() - lines[first].baseline;
  double scale = 1;
  // Empty lines at the end were measured as if they had glyphs.
  if (end == inks.end()) {
    const double below = inks[last].bottom() - lines[last].baseline;
    scale = (wanted.bottom() - lines[last].baseline - wantedAbove) / (below - above);
    if (!isWithin(scale, kMaxScale)) return {};
  }
  const double move = wantedAbove - scale * above;
  return std::abs(move) <= kMaxMoveDown * lineHeight ? Fit{0, move, scale} : Fit{};
}

}  // namespace

void fitInk(const TextBox& box, const QList<PlacedLine>& lines, double offset, TextLayout* layout) {
  if (layout->missingFonts.isEmpty() || !box.hasInkInside(layout->size.height(), lines.size())) {
    return;
  }
  QList<QRectF> inks;
  QRectF ink;
  for (const PlacedLine& line : lines) {
    inks.append(inkOf(line, *layout));
    ink |= inks.last();
  }
  if (ink.isEmpty()) return;
  const double lineHeight = layout->size.height() / double(lines.size());
  const QRectF wanted = nearTo(ink, box.ink.translated(0, offset));
  const Fit across = fitAcross(ink, wanted, lines[0].alignment, lineHeight);
  const Fit down = fitDown(lines, inks, wanted, lineHeight);
  for (const PlacedLine& line : lines) {
    const double y = Fit{line.baseline, down.move, down.scale}.origin();
    const QTransform toPlace(across.scale, 0, 0, down.scale, across.origin(), y);
    for (qsizetype i = line.firstRun; i < line.lastRun; ++i) layout->runs[i].transform(toPlace);
  }
}

}  // namespace kelvar::render
