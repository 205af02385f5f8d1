#pragma once

#include <QPainterPath>

namespace kelvar::render {

/// The corners that two paths may have together, curves cut into straight pieces and crossings
/// counted twice, for the painter to combine them: about two seconds of a call that nothing can
/// interrupt, and the time grows faster than with their square.
inline constexpr qint64 kMostCorners = 40'000;

/// Whether the union, intersection or difference of the paths, or with one path its simplification,
/// is worth beginning.
bool canCombine(const QPainterPath& first, const QPainterPath& second = {});

}  // namespace kelvar::render
