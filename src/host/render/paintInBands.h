#pragma once

#include <QPainterPath>
#include <functional>
#include <stop_token>

#include "host/render/Surface.h"

namespace kelvar::render {

/// Calls `paint` with the canvas; or, where `path`, which it fills, or an outline that cuts it
/// would keep the painter busy for a second or more, with bands of the canvas, from top to bottom
/// until it is to stop: the painter itself cannot be interrupted. `path` is in the canvas's
/// coordinates.
void paintInBands(const Canvas& canvas, const QPainterPath& path, const std::stop_token& stop,
                  const std::function<void(const Canvas&)>& paint);

}  // namespace kelvar::render
