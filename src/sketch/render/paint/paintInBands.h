#pragma once

#include <QPainterPath>
#include <functional>
#include <stop_token>

#include "sketch/render/paint/PaintContext.h"

namespace kelvar::render {

/// Calls `paint`, which fills `path`, with the canvas. If the path or a clip would keep the painter
/// busy for a second or more, calls it once for each of several bands of the canvas instead, from
/// top to bottom until a stop is requested, because the painter itself cannot be interrupted.
/// `path` is in the canvas's coordinates.
void paintInBands(const PaintContext& canvas, const QPainterPath& path, const std::stop_token& stop,
                  const std::function<void(const PaintContext&)>& paint);

}  // namespace kelvar::render
