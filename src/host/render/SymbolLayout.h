#pragma once

#include "host/SketchJson.h"

namespace kelvar::render {

/// Where the master of a symbol lays out its layers by itself ("groupLayout"): gives its replaced
/// texts the room that they take, closes the gaps of what is hidden, moves what comes after along
/// the layout's axis, and lets what spans all of it, and the master's frame, grow with it. Changes
/// nothing for other masters. Needs an application with fonts.
void layOut(SketchJson* master);

}  // namespace kelvar::render
