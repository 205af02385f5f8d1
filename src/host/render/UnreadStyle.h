#pragma once

#include <QStringList>

#include "host/SketchJson.h"

namespace kelvar::render {

/// What a layer's "style" asks for that `readLayerStyle` does not know, such as the effects of
/// later versions of the host: paths like "borders.sides", or "blurs.type 7" for a choice that is
/// none of the known ones. Parts that are switched off and members that say nothing (false, 0,
/// empty) are passed over, and so are texts' own styles.
QStringList unreadMembers(const SketchJson& style);

}  // namespace kelvar::render
