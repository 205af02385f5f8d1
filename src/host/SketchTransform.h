#pragma once

#include <QTransform>

#include "host/SketchJson.h"

namespace kelvar {

/// From a layer's own coordinates to those around it: rotation about the middle (degrees,
/// counter-clockwise on screen), then flips, then the frame's origin.
QTransform sketchTransform(const SketchJson& layer);

}  // namespace kelvar
