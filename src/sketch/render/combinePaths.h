#pragma once

#include <QPainterPath>

namespace kelvar::render {

/// How a part of a combined shape changes the parts below it. The numbers are those of documents.
enum class BooleanOperation { None = -1, Union = 0, Subtract = 1, Intersect = 2, Difference = 3 };

/// `below` combined with `above`, each filled by its own rule; the result is for the odd-even rule
/// unless the operation is `None`, which keeps the rule of `below`. Parts that do not touch keep
/// their curves. Others become polygons that are off by at most a 250th of a unit, as the painter's
/// own operations on curves lose parts.
QPainterPath combinePaths(const QPainterPath& below, const QPainterPath& above,
                          BooleanOperation operation);

}  // namespace kelvar::render
