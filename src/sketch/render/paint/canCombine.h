#pragma once

#include <QPainterPath>

namespace kelvar::render {

/// Maximum number of corners, in total, of two paths that are combined, with curves split into
/// straight segments and crossings counted twice. Combining that many takes about two seconds and
/// cannot be interrupted, and the time grows faster than quadratically.
inline constexpr qint64 kMaxCorners = 40'000;

/// Whether the union, intersection or difference of the paths, or the simplification of a single
/// one, stays within that limit.
bool canCombine(const QPainterPath& first, const QPainterPath& second = {});

}  // namespace kelvar::render
