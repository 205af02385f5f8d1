#pragma once

#include <QRectF>

#include "host/SketchJson.h"

namespace kelvar::render {

/// What a layer covers in the coordinates around it, with its borders, blur and shadows as far as
/// the host counts them: a shadow to its blur radius. Hidden layers and those that draw nothing
/// cover nothing. Before Sketch 52 the host counted a shadow's offset to all sides; `documentVersion`
/// is that of meta.json.
QRectF layerExtent(const SketchJson& layer, int documentVersion);

}  // namespace kelvar::render
