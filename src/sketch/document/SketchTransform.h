#pragma once

#include <QTransform>

#include "sketch/document/SketchJson.h"

namespace kelvar {

/// Maps a layer's own coordinates to its parent's: rotates about the center (in degrees,
/// counterclockwise on screen), then flips, then moves to the frame's origin.
QTransform sketchTransform(const SketchJson& layer);

}  // namespace kelvar
