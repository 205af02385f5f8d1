#pragma once

#include <QByteArray>
#include <QSizeF>
#include <functional>

#include "pixels/Result.h"
#include "platform/image/Image.h"
#include "platform/image/RendererProcess.h"

namespace kelvar {

/// Draws an SVG at the size that `rasterizationSize` returns for its natural size, or at its
/// natural size if the function is empty. The image's nominal size is the natural size. Fails if
/// the SVG is not XML or declares no size, if a size is invalid or beyond the image limits, or if
/// drawing exceeds `limits`. Safe from any thread.
///
/// Only the file's own contents are drawn: external images, style sheets and entities are removed
/// before the renderer sees them, and so are embedded images other than bitmaps, which could refer
/// to others.
///
/// The SVG is drawn by a separate process, kelvar-svg, which is killed if it exceeds the limits and
/// returns the pixels in shared memory. Nothing less limits the cost of an SVG, which depends on
/// lengths, dashes, joins, areas and references in ways that only the renderer discovers: a check
/// beforehand would miss some expensive files or reject valid ones, and a renderer cannot be
/// interrupted from within its own process. An SVG that crashes the renderer results in an ordinary
/// error.
Result<ImageRef> readSvg(const QByteArray& file,
                         const std::function<QSizeF(const QSizeF&)>& rasterizationSize,
                         const RendererLimits& limits = {});

/// The same for a PDF, whose first page kelvar-pdf draws.
Result<ImageRef> readPdf(const QByteArray& file,
                         const std::function<QSizeF(const QSizeF&)>& rasterizationSize,
                         const RendererLimits& limits = {});

}  // namespace kelvar
