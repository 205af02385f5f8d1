#pragma once

#include "runtime/ClassInfo.h"
#include "sketch/document/SketchLayer.h"

namespace kelvar {

/// What text layers have for their fonts and for characters that look different.
ClassInfoBuilder<SketchLayer> withAttributes(ClassInfoBuilder<SketchLayer> builder);

/// The part of a style that is about texts. Instances are `ModelPart`s.
const ClassInfo& textStyleClass();

}  // namespace kelvar
