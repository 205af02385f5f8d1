#pragma once

#include "host/SketchJson.h"

namespace kelvar {

/// A rectangle, oval, triangle, polygon, star or shape path: a layer with a path of its own.
bool isSketchShape(const SketchJson& layer);

/// An artboard, or the master of a symbol, which is one too.
bool isSketchArtboard(const SketchJson& layer);

/// A group with a ground of its own, which newer documents have in place of artboards, and in one
/// another: a frame or a graphic ("groupBehavior").
bool isSketchFrame(const SketchJson& layer);

/// Whether an artboard or a frame cuts off what reaches out of it.
bool cutsItsContents(const SketchJson& layer);

}  // namespace kelvar
