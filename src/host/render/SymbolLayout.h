#pragma once

#include <stop_token>

#include "host/SketchJson.h"

namespace kelvar::render {

/// Where the master of a symbol, or a group in it, lays out its layers by itself ("groupLayout"):
/// gives replaced texts and nested instances the room that they take, closes the gaps of what is
/// hidden, moves what comes after along the layout's axis, and lets what spans all of it, and its
/// own frame, grow with it. In one, groups without a layout of their own keep around what is in
/// them. Changes nothing where everything has the size that it had. Needs an application with
/// fonts. Left half done once it is to stop.
void layOut(SketchJson* master, const std::stop_token& stop = {});

/// Whether a master, or a group, has a layout that moves what is in it.
bool laysItselfOut(const SketchJson& container);

/// Tells a nested instance by how much more, or less, room it wants than its frame has, since what
/// it shows was replaced.
void addGrowth(const QSizeF& growth, SketchJson* instance);

}  // namespace kelvar::render
