#pragma once

#include <QStringList>

#include "sketch/document/SketchJson.h"

namespace kelvar::render {

/// The members of a layer's "style" that `readLayerStyle` does not know, such as the effects of
/// later versions of Sketch: paths like "borders.sides", or "blurs.type 7" for an unknown choice.
/// Skips parts that are switched off, members that have no effect (false, 0, empty) and the styles
/// of text.
QStringList unsupportedProperties(const SketchJson& style);

/// The members of a bitmap layer that change how its image is cut or stretched in later versions.
QStringList unsupportedOfBitmap(const SketchJson& bitmap);

}  // namespace kelvar::render
