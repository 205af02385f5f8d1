#pragma once

#include <QImage>
#include <QPoint>
#include <QRect>

namespace kelvar::render {

/// The pixels of a rectangle of the image that is being drawn.
struct BitmapTile {
  QImage pixels;
  QPoint origin;

  /// A transparent tile; without pixels if the rectangle is empty or too large for memory.
  static BitmapTile of(const QRect& rect);
  QRect rect() const { return {origin, pixels.size()}; }
  bool isEmpty() const { return pixels.isNull(); }
};

/// The smallest rectangle of whole pixels that contains `area`, grown by `margin` pixels and
/// clipped to `limits`. The area may be of any size and at any position.
QRect touchedPixels(const QRectF& area, int margin, const QRect& limits);

}  // namespace kelvar::render
