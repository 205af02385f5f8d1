#pragma once

#include <QImage>

#include "host/render/LayerStyle.h"

namespace kelvar::render {

/// Changes the colours of premultiplied pixels: hue and saturation first, then contrast about the
/// middle grey, then brightness.
void tone(QImage* pixels, const ColorControls& controls);

}  // namespace kelvar::render
