#pragma once

#include <string>

#include "mockup/DocumentMapping.h"

namespace kelvar::cli {

/// Opens the command's document and publishes its host version through `Bundle`. If `output` is the
/// same file, other Kelvar programs that are about to replace it have to wait. Throws a
/// `CommandError` if the document cannot be read.
SketchDocumentRef openDocument(const std::string& path, const std::string& output = {});

/// Prints one line on standard error for each unsupported feature.
void printWarnings(const QStringList& warnings);

/// Prints the report of --json: the layers that were mapped and the settings stored on them.
void reportMapped(const QList<SketchLayerRef>& layers);

}  // namespace kelvar::cli
