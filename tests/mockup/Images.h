#pragma once

#include <gtest/gtest.h>

#include <QImage>

#include "mockup/Mockup.h"

namespace kelvar {

/// An image in which neighboring pixels differ.
inline QImage noise(int width, int height, uint seed = 0) {
  QImage pixels(width, height, QImage::Format_RGB32);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      pixels.setPixel(x, y, 0xff000000 | ((x * 2654435761u + y * 40503u + seed) >> 3 & 0xffffff));
    }
  }
  return pixels;
}

/// Blue, with a red quarter at its top left.
inline QImage withRedCorner(int side) {
  QImage pixels(side, side, QImage::Format_RGB32);
  pixels.fill(Qt::blue);
  for (int y = 0; y < side / 2; ++y) {
    for (int x = 0; x < side / 2; ++x) pixels.setPixelColor(x, y, Qt::red);
  }
  return pixels;
}

/// Draws the shape with every rotation and flip of a design that `withRedCorner` made.
inline void expectRedAtTopLeftCorner(Mockup& mockup, Arrangement arrangement,
                                     const QString& shapeId) {
  Arrangement::Shape& shape = *arrangement.shape(shapeId);
  const QPointF middle =
      (shape.corners[0] + shape.corners[1] + shape.corners[2] + shape.corners[3]) / 4;
  for (int i = 0; i < 8; ++i) {
    shape.options.rotation = i % 4;
    shape.options.flipped = i >= 4;
    const QImage drawn = mockup.draw(arrangement, Mockup::Purpose::Window).image.value()->pixels();
    for (size_t corner = 0; corner < 4; ++corner) {
      const QPointF inside = (shape.corners[corner] + middle) / 2;
      const QColor color = drawn.pixelColor(int(inside.x()), int(inside.y()));
      EXPECT_EQ(color.red() > color.blue(), corner == shape.topLeftCorner())
          << shapeId.toStdString() << " rotation " << shape.options.rotation << " flipped "
          << shape.options.flipped << " corner " << corner;
    }
  }
}

}  // namespace kelvar
