#pragma once

#include "sketch/render/paint/BlendMode.h"
#include "sketch/render/paint/PaintContext.h"

namespace kelvar::render {

/// Blends a tile onto another within the context's clips. No painter may be active on `above`.
void compose(const BitmapTile& above, const PaintContext& below, BlendMode mode, double opacity);

}  // namespace kelvar::render
