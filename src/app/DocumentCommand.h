#pragma once

#include <string>

#include "host/DocumentMapping.h"

namespace kelvar::app {

/// The document that a command is about, whose host is from then on the host. Where `output` is the
/// same file, other programs that would replace it wait. Throws a `Failure` where it cannot be
/// read.
SketchDocumentRef openDocument(const std::string& path, const std::string& output = {});

/// A line on standard error for each thing that was not drawn as the document wants it.
void tellWarnings(const QStringList& warnings);

/// The report of --json: the layers that got a picture, and what is remembered on them.
void reportMapped(const QList<SketchLayerRef>& layers);

}  // namespace kelvar::app
