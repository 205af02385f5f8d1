#pragma once

#include <QStringList>

#include "host/SketchDocument.h"
#include "host/SketchJson.h"

namespace kelvar::render {

/// The master of an instance as the instance shows it: with its overrides and at its size. None of
/// the document's own JSON is changed. Overrides of instances within are handed down to them.
/// Null JSON when the master is missing. What cannot be applied gets a line in `*warnings`.
SketchJson expandedInstance(const SketchJson& instance, const SketchDocument& document,
                            QStringList* warnings);

/// On text layers within: the text is not the one that the frame was made for.
inline constexpr const char* kIsOverridden = "kelvar.isOverridden";

}  // namespace kelvar::render
