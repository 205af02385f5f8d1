#pragma once

#include <QStringList>
#include <stop_token>

#include "sketch/document/SketchDocument.h"
#include "sketch/document/SketchJson.h"

namespace kelvar::render {

/// A copy of an instance's master with the instance's overrides and size applied. Overrides of
/// nested instances are passed on to them. Nested instances in layouts are measured again while
/// `*layoutBudget` lasts, and keep their sizes after that. Returns null JSON if the master is
/// missing. Adds a line to `*warnings` for each override that cannot be applied. The result is
/// incomplete once a stop is requested.
SketchJson instantiateSymbol(const SketchJson& instance, const SketchDocument& document,
                             int* layoutBudget, QStringList* warnings,
                             const std::stop_token& stop = {});

}  // namespace kelvar::render
