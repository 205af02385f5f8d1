#pragma once

#include <QPainter>
#include <QPainterPath>
#include <QRectF>

#include "platform/image/Image.h"
#include "sketch/document/LayerStyle.h"

namespace kelvar::render {

/// A brush for a color or a gradient, whose positions are fractions of `box`.
QBrush brushFor(const Paint& paint, const QRectF& box);

/// Fills `path` with a color, a gradient or the image of a pattern, in the painter's current mode
/// and coordinates. The caller applies the paint's own opacity and blend mode. Gradients and images
/// are laid over `box`. `image` is the image of a pattern, and may be null for other paints; a
/// pattern without an image paints nothing.
void fillPath(QPainter* painter, const QPainterPath& path, const Paint& paint, const QRectF& box,
              const ImageRef& image);

/// The image, reduced to the size in pixels at which the painter will draw it into `target`.
/// Averages pixels when reducing, because the painter only interpolates between neighbors.
QImage shrunkFor(const QImage& image, const QRectF& target, const QTransform& toDevice);

/// The factor by which `transform` scales lengths; if it differs between directions, the mean of
/// both.
double scaleOf(const QTransform& transform);

}  // namespace kelvar::render
