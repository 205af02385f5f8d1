#pragma once

#include <QPainter>
#include <QPainterPath>
#include <QRectF>

#include "host/render/LayerStyle.h"
#include "platform/Image.h"

namespace kelvar::render {

/// A brush for a colour or a gradient, whose positions are parts of `box`.
QBrush brushFor(const Paint& paint, const QRectF& box);

/// Fills `path` with a colour, a gradient or the picture of a pattern, in the painter's present
/// mode and coordinates; the paint's own opacity and blend mode are the caller's. `box` is what
/// gradients and pictures are laid over. `picture` may be null for what is no pattern; a pattern
/// without a picture paints nothing.
void paintArea(QPainter* painter, const QPainterPath& path, const Paint& paint, const QRectF& box,
               const ImageRef& picture);

/// The picture at the size in pixels at which the painter will draw it into `target`: averaged
/// where it shrinks, since the painter interpolates between neighbours only.
QImage shrunkFor(const QImage& picture, const QRectF& target, const QTransform& toDevice);

/// By how much lengths grow under `transform`; for one that stretches, the mean of both ways.
double scaleOf(const QTransform& transform);

}  // namespace kelvar::render
