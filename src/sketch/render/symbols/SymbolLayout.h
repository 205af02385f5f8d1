#pragma once

#include <stop_token>

#include "sketch/document/SketchJson.h"

namespace kelvar::render {

/// Applies the smart layouts ("groupLayout") of a symbol's master and of the groups in it.
///
/// Makes room for replaced text and nested instances, closes the gaps of hidden layers, moves the
/// layers that follow along the layout's axis, and resizes the frame and the layers that span it.
/// Groups without a layout of their own are fitted around their contents. Changes nothing if no
/// layer's size has changed. Requires an application with fonts. Incomplete once a stop is
/// requested.
void applySmartLayout(SketchJson* master, const std::stop_token& stop = {});

/// Whether a master or a group has a smart layout.
bool hasSmartLayout(const SketchJson& container);

/// Records on a nested instance by how much its replaced contents exceed its frame; negative if
/// they are smaller.
void setSizeDelta(const QSizeF& growth, SketchJson* instance);

}  // namespace kelvar::render
