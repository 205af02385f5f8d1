#pragma once

#include <optional>

#include "sketch/render/text/LineBreaker.h"

namespace kelvar::render {

/// Versions of a font differ in width by less than this fraction.
inline constexpr double kMaxSpacing = 0.05;
/// How much of a fallback's width is corrected by spacing; the rest takes other shapes. A fraction.
inline constexpr double kMaxFallbackSpacing = 0.03;

/// What to add after each character to make the widest line as wide as the frame, if it grows with
/// its text: another version of a font has other widths, and so has a fallback. 0 if it is as wide,
/// except for rounding, or if spacing would not help.
double spacingToFit(const Paragraphs& paragraphs, const ItemizedText& text, const TextBox& box);

/// The ratio of Sketch's glyph widths to the fonts' that breaks the text into the lines that its
/// frame and, for a fallback, its ink have room for. None if that is what `paragraphs` are, which
/// are `height` high, or if it would take too much. The frame was made for the text.
std::optional<double> widthRatioToFit(ItemizedText text, const TextBox& box,
                                      const Paragraphs& paragraphs, double height);

}  // namespace kelvar::render
