#pragma once

#include <QPainterPath>

namespace kelvar::render {

/// A glyph with thicker strokes, or with thinner ones: its outline is moved outwards by `amount`,
/// which may be negative. Baseline and height of capitals, `capitals` above it, stay. For weights
/// that a typeface does not have. y is down, from the baseline.
QPainterPath reweighted(const QPainterPath& glyph, double amount, double capitals);

}  // namespace kelvar::render
