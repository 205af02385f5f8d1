#pragma once

#include <QImage>

#include "sketch/document/LayerStyle.h"

namespace kelvar::render {

/// Applies each of `tones` to premultiplied pixels: hue and saturation first, then contrast around
/// middle gray, then brightness.
QImage applyColorControls(QImage pixels, const QList<ColorControls>& tones);

}  // namespace kelvar::render
