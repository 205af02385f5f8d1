#pragma once

#include <QPainter>
#include <optional>

#include "pixels/composite/BlendMode.h"

namespace kelvar::render {

/// The QPainter mode with the same result; none if QPainter has no such mode.
std::optional<QPainter::CompositionMode> compositionOf(BlendMode mode);

}  // namespace kelvar::render
