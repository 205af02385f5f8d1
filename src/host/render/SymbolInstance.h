#pragma once

#include <QStringList>
#include <stop_token>

#include "host/SketchDocument.h"
#include "host/SketchJson.h"

namespace kelvar::render {

/// The master of an instance as the instance shows it: with its overrides and at its size. None of
/// the document's own JSON is changed. Overrides of instances within are handed down to them.
/// Nested instances in layouts are measured anew while `*measuresLeft` lasts; then they keep their
/// sizes. Null JSON when the master is missing. What cannot be applied gets a line in `*warnings`.
/// Once it is to stop, the rest is left undone.
SketchJson expandedInstance(const SketchJson& instance, const SketchDocument& document,
                            int* measuresLeft, QStringList* warnings,
                            const std::stop_token& stop = {});

}  // namespace kelvar::render
