#pragma once

#include <QPainterPath>
#include <QRectF>

#include "sketch/document/Layer.h"
#include "sketch/render/text/TextRuns.h"

namespace kelvar::render {

/// Maximum blur, in pixels: a wider one looks the same but takes more memory.
inline constexpr double kMaxBlur = 500;

/// The area that a layer covering `content` may paint, including its borders, shadows and blurs.
QRectF withStyle(const QRectF& content, const LayerStyle& style);

/// The area in which the glyphs of a text can be, in its own coordinates, determined without laying
/// it out. `path` is the path that the text runs along; empty for none.
QRectF textBounds(const Layer& text, const TextRuns& runs, const QPainterPath& path);

/// The widest blur that applies to the layer itself, in its units; 0 for none.
double ownBlur(const LayerStyle& style);

/// `rect` with a margin on all sides.
QRectF grown(const QRectF& rect, double margin);

}  // namespace kelvar::render
