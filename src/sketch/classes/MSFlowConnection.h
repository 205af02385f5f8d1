#pragma once

#include "runtime/ClassInfo.h"
#include "sketch/document/SketchLayer.h"

namespace kelvar {

/// The link of a layer in a prototype. Instances are `ModelPart`s.
const ClassInfo& flowClass();

/// What every layer has for prototypes.
ClassInfoBuilder<SketchLayer> withFlow(ClassInfoBuilder<SketchLayer> builder);

}  // namespace kelvar
