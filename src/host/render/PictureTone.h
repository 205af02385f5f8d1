#pragma once

#include <QImage>

#include "host/render/LayerStyle.h"

namespace kelvar::render {

/// The picture with the colours of its premultiplied pixels changed by each of `tones`: hue and
/// saturation first, then contrast about the middle grey, then brightness.
QImage toned(QImage pixels, const QList<ColorControls>& tones);

}  // namespace kelvar::render
