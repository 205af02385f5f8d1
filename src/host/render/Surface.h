#pragma once

#include <QImage>
#include <QList>
#include <QPainter>
#include <QPainterPath>
#include <QRect>
#include <QTransform>

#include "host/render/BlendMode.h"

namespace kelvar::render {

/// Pixels of a part of the picture that is being drawn, at their place in it.
struct Surface {
  QImage pixels;
  QPoint origin;

  /// A transparent one. Without pixels when the rectangle is empty or cannot be held.
  static Surface of(const QRect& rect);
  QRect rect() const { return {origin, pixels.size()}; }
  bool isEmpty() const { return pixels.isNull(); }
};

/// The whole pixels of `limits` that `area` or what lies within `margin` of it touches, for areas
/// of any size and at any place.
QRect touchedPixels(const QRectF& area, int margin, const QRect& limits);

/// Where and how a layer is drawn: a surface, the way from the layer's coordinates to the picture's
/// pixels, and the outlines, in the picture's pixels, that everything is cut with.
struct Canvas {
  Surface* surface = nullptr;
  QTransform toPicture;
  QList<QPainterPath> clips;

  /// The same place with coordinates that `inner` leads out of.
  Canvas within(const QTransform& inner) const { return {surface, inner * toPicture, clips}; }
};

/// Sets `painter` up on the canvas: smooth, in the layer's coordinates, cut.
void begin(QPainter* painter, const Canvas& canvas);

/// Cuts with an outline in the painter's coordinates. The painter cuts rectangles at whole pixels;
/// here they get smooth edges as well.
void cut(QPainter* painter, const QPainterPath& outline);

/// Mixes `above` onto the canvas, where the canvas's clips let it.
void compose(const Surface& above, const Canvas& canvas, BlendMode mode, double opacity);

}  // namespace kelvar::render
