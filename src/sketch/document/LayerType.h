#pragma once

#include "sketch/document/SketchJson.h"

namespace kelvar {

/// A rectangle, oval, triangle, polygon, star or shape path: a layer with a path of its own.
bool isSketchShape(const SketchJson& layer);

/// An artboard or a symbol master, which is also an artboard.
bool isSketchArtboard(const SketchJson& layer);

/// A group with a background of its own: a frame or a graphic ("groupBehavior"). Newer documents
/// use these instead of artboards and can nest them.
bool isSketchFrame(const SketchJson& layer);

/// Whether an artboard or a frame clips contents that extend beyond it.
bool clipsContent(const SketchJson& layer);

}  // namespace kelvar
