#pragma once

#include <QPainterPath>

namespace kelvar::render {

/// Imitates a weight that a typeface lacks: moves the glyph's outline outward by `amount`, or
/// inward if it is negative. The baseline and the cap height `capitals` stay the same. y is down,
/// from the baseline.
QPainterPath embolden(const QPainterPath& glyph, double amount, double capitals);

}  // namespace kelvar::render
