#pragma once

#include "runtime/ClassInfo.h"
#include "sketch/document/SketchLayer.h"

namespace kelvar {

/// What helps the host's users to place layers: the guides of rulers, the grid and the layout of
/// artboards and pages. None of it is drawn. Instances are `ModelPart`s.

const ClassInfo& rulerClass();
const ClassInfo& gridClass();
const ClassInfo& layoutClass();

/// What artboards and pages have of them.
ClassInfoBuilder<SketchLayer> withRulersAndGrids(ClassInfoBuilder<SketchLayer> builder);

}  // namespace kelvar
